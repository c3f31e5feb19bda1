# Build rules that refuse mistakes early.

# A source glob that finds nothing is a misspelt folder or a lost file, never an
# intended empty library.
function(tessel_glob out)
  file(GLOB_RECURSE found CONFIGURE_DEPENDS ${ARGN})
  if(NOT found)
    message(FATAL_ERROR "No source files match: ${ARGN}")
  endif()
  set(${out} ${found} PARENT_SCOPE)
endfunction()

# The include root of a layer holds only the folders that layer may include, so
# that a component file reaching for a workbench header fails to compile
# instead of quietly growing a dependency the wrong way.
function(tessel_include_root out layer)
  set(root ${CMAKE_BINARY_DIR}/include-roots/${layer})
  file(MAKE_DIRECTORY ${root})
  foreach(folder ${ARGN})
    if(NOT EXISTS ${root}/${folder})
      file(CREATE_LINK ${PROJECT_SOURCE_DIR}/${folder} ${root}/${folder} SYMBOLIC)
    endif()
  endforeach()
  set(${out} ${root} PARENT_SCOPE)
endfunction()

tessel_include_root(TESSEL_BOUNDARY_ROOT boundary boundary)
tessel_include_root(TESSEL_COMPONENT_ROOT component boundary component)
tessel_include_root(TESSEL_WORKBENCH_ROOT workbench boundary workbench)
tessel_include_root(TESSEL_PLATFORM_ROOT platform boundary platform)
tessel_include_root(TESSEL_APP_ROOT app boundary workbench platform app)
