#pragma once
#include <string>
#include <vector>

#include "boundary/interfaces/Workspace.h"
#include "component/program/CDownloadModuleData.h"

// The file list kept beside a download module, as the project service reads
// and writes it: three lists of strings. The located list opens with two
// entries of its own, the module's file time (16 hexadecimal digits) and the
// module's directory at the time of the scan; each searched directory carries
// its subdirectories flag as one last digit.
namespace FileManagerList
{

// D/S_files.qdd for the module D/S.ext.
std::string PathFor(const std::string& modulePath);

// Written to the data's list file, whose directory is the module's.
bool Write(IQProjectFileService* service, const CDownloadModuleData& data);

// Fills `data` from the list; false, with `data` untouched, when there is no
// readable list.
bool Read(IQProjectFileService* service, const std::string& path, CDownloadModuleData& data,
          std::string& moduleDirectory);

} // namespace FileManagerList
