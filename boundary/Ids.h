#pragma once
#include "boundary/Guid.h"

// Every identifier of the system, in one place.
namespace Ids
{

// IUnknown and the generic interfaces every component answers.
inline constexpr Guid IUnknown = "{A8495740-DE13-11D3-8AF5-00AA0026624A}"_guid;
inline constexpr Guid IQComponent = "{A8495747-DE13-11D3-8AF5-00AA0026624A}"_guid;
inline constexpr Guid IQErrorReporter = "{4BCBB0D1-1757-4741-9D84-D12924DC408B}"_guid;

// The debugger component's identities.
inline constexpr Guid Component = "{6E5BE760-CF7F-11D4-8BBB-D607EBD66972}"_guid;
inline constexpr Guid SessionDataType = "{D41EFDA0-D1DF-11D4-8BBB-83768F885570}"_guid;

// Busy marks of the workbench.
inline constexpr Guid BusyRun = SessionDataType;
inline constexpr Guid BusyLoad = "{AEB29380-195D-11D6-8BC2-0004E2013C71}"_guid;

// Interfaces of the debugger state.
inline constexpr Guid IQDebuggerState = "{327F61F2-750D-11D5-80D8-00C04F68EAD7}"_guid;
inline constexpr Guid IQDebuggerState2 = "{AEB29380-195D-11D6-8BC2-0004E2013C71}"_guid;
inline constexpr Guid IQDebuggerState3 = "{200F096A-7B88-4898-8D5C-4417370AC473}"_guid;
inline constexpr Guid IQDebuggerState4 = "{20468262-FD07-4CA2-8752-31F966A4179A}"_guid;
inline constexpr Guid IQDebuggerState5 = "{DA8C74F5-F1AF-4006-A064-BDEAD9B7EC14}"_guid;
inline constexpr Guid IQDebuggerState6 = "{A46149FF-AC98-4C71-8CB3-8847F536C901}"_guid;
inline constexpr Guid IQDebuggerState7 = "{DC248728-FC2E-4132-8AC3-666FDB2C18C2}"_guid;
inline constexpr Guid IQDebuggerState8 = "{294F2D8F-B058-4689-A377-E4E5EE4AAA42}"_guid;
inline constexpr Guid IQDebuggerState9 = "{74A3B0E8-F244-4BB1-A7AA-941657427171}"_guid;
inline constexpr Guid IQDebuggerSync = "{C47F3E3C-311D-4553-A0F3-097FB9E100B0}"_guid;
inline constexpr Guid IQSourceManager = "{DD4B2D8A-6AF5-45DF-8307-B9F67B48755B}"_guid;
inline constexpr Guid IQDebuggerApplicationServer = "{391D0DC2-05FF-4B04-994B-A5DB1FF3561B}"_guid;
inline constexpr Guid IQDisassemblyDataManagerServer = "{98AFF699-E594-4941-BD35-A8E71D43DEAA}"_guid;
inline constexpr Guid IQLabelManager2 = "{2B27EEC9-5BFB-420E-941E-A84E8A6CAA30}"_guid;
inline constexpr Guid IQLabelManager = "{914F4C74-D760-11D4-940A-00C04F68EB57}"_guid;
inline constexpr Guid IQLabelManagerInternal = "{5E5AF60D-BEA9-4A7A-84B1-093F678A98C5}"_guid;
inline constexpr Guid IQPostMessageClient = "{F7EFE0B2-8A94-418A-9C89-E0B9C7BEF55D}"_guid;
inline constexpr Guid IQFileMonitorClient = "{4AF5E54D-E8F3-469B-9F47-126649220905}"_guid;
inline constexpr Guid HostExtras = "{D5BB79DE-DAF7-43CF-B4AE-7546179BD048}"_guid;

// The break manager's three service identifiers.
inline constexpr Guid IQPCBreakManager = "{C6CB7C2E-01BD-11D5-80BD-00C04F68EAD7}"_guid;
inline constexpr Guid IQPCBreakManager2 = "{3B50335A-3FD2-4590-8795-661A29EA6416}"_guid;
inline constexpr Guid IQPCBreakManager3 = "{03657416-0C02-4289-AC47-BD2F73D565E7}"_guid;

// The runner's interfaces, first to sixth.
inline constexpr Guid IQRunner = "{7FB2B220-79FA-11D5-8BBE-0004E2013C71}"_guid;
inline constexpr Guid IQRunner2 = "{160415CE-14A7-11D6-80FC-00C04F68EAD7}"_guid;
inline constexpr Guid IQRunner3 = "{6CF44F08-E64F-4A17-BAC2-173D2037D018}"_guid;
inline constexpr Guid IQRunner4 = "{19572199-366A-4892-A29E-221876F1406A}"_guid;
inline constexpr Guid IQRunner5 = "{A9D793ED-EF15-4BD5-9FF0-3030EFC4598C}"_guid;
inline constexpr Guid IQRunner6 = "{013748EE-56F1-4D11-94EF-7CD6A218C02D}"_guid;

// Memory and evaluation.
inline constexpr Guid IQMemoryManager = "{A849574A-DE13-11D3-8AF5-00AA0026624A}"_guid;
inline constexpr Guid IQStatusClient = "{04DCBFF1-F50B-472B-BDD8-D6241664D89C}"_guid;
// The status window's page of what is loaded where.
inline constexpr Guid StatusMemoryPage = "{DCAFAA11-3C57-40F2-8F74-AF51A83B32CE}"_guid;
inline constexpr Guid IQMemoryManager2 = "{52E19F40-C937-11D5-8BC1-0004E2013C71}"_guid;
inline constexpr Guid IQMemoryManager3 = "{A2E8A611-CC1E-4173-985E-E38024BD0EC1}"_guid;
inline constexpr Guid IQMemoryManager4 = "{272DF1D0-2F68-4ADC-833C-52F65CF6D1E3}"_guid;
inline constexpr Guid IQMemoryManager5 = "{20B05046-3086-4F46-870B-8FE4EA17131C}"_guid;
inline constexpr Guid IQMemoryManagerCmdLine = "{D39701D9-E3A6-4180-971D-0ECF28CCE9FE}"_guid;
inline constexpr Guid IQMemoryManagerCmdLine2 = "{7BD11876-340C-437A-A5D8-64B14B383E60}"_guid;
inline constexpr Guid IQMemoryManagerCmdLine3 = "{786153AF-8491-438B-8BA6-01EC958D8D8A}"_guid;
inline constexpr Guid IQMemoryManagerCmdLine4 = "{8326259A-1A5E-4771-B9D1-EF16E3428BA0}"_guid;
inline constexpr Guid IQMemoryManagerCmdLine5 = "{763D2769-3EB0-4545-B9D1-8224974CB02B}"_guid;
inline constexpr Guid IQEvaluator = "{A8495743-DE13-11D3-8AF5-00AA0026624A}"_guid;
inline constexpr Guid IQEvaluator2 = "{AFFBE6B9-BD14-4950-BBD0-1EC28CC48800}"_guid;
inline constexpr Guid IQEvaluatorHost = "{9C2053D8-5EC0-43A3-BA10-0DA97D31CD6E}"_guid;

// Disassembly views and their servers.
inline constexpr Guid IQDisassemblyClient = "{3D87F7C0-1F99-47E8-ABAA-7CF31BA63B2F}"_guid;

// Session data controller.
inline constexpr Guid IQWorkSpaceClient = "{56836F34-D734-11D4-BE83-00C04F794B59}"_guid;
inline constexpr Guid IQWorkSpaceClient2 = "{453547D2-008B-44A3-BDF4-48B86CBCFB44}"_guid;
inline constexpr Guid IQWorkSpaceExtendedClient = "{C53FCCEE-9945-4A25-9635-4D62C8B656A1}"_guid;

// The workbench's output window, one tab a text stream.
inline constexpr Guid OutputWindow = "{2C6E1F0B-5A3D-4E8B-9C71-0D4F2A6B8E13}"_guid;

// Workbench services.
inline constexpr Guid ErrorTable = "{90EFE761-0B7C-11D6-8BC2-0004E2013C71}"_guid;
inline constexpr Guid IQDebugSettingsStore = "{1F1EB07A-17FA-41DE-9974-1D394F0103CA}"_guid;
inline constexpr Guid IQSessionData = "{4F5DB7F5-2214-4673-A559-91C67ABDFDDE}"_guid;
inline constexpr Guid IQTargetRegistry = "{2E26763E-6CD2-4E4E-8DFA-D3DD21509CD6}"_guid;
inline constexpr Guid IQWorkspaceInfo = "{A538CBA2-D5B7-11D4-BE81-00C04F794B59}"_guid;
inline constexpr Guid CustomPlaceholders = "{8403CE5C-6C18-4EF5-89DB-F9E6205C0A3A}"_guid;
inline constexpr Guid ProjectFileService = "{E6D8CCD8-6966-4AF4-A2FF-B2ABD002AE15}"_guid;
inline constexpr Guid UserPromptTable = "{6080BCB2-BBFD-4E9C-BE8D-8AC4F6A6ABA6}"_guid;
inline constexpr Guid IQCommandRecorder = "{F0FC2120-D4A5-4A2D-AC02-B56864625CEA}"_guid;
inline constexpr Guid CommandLineService = "{A27DD118-38A0-11D5-80CC-00C04F68EAD7}"_guid;
inline constexpr Guid CommandHelpService = "{A27DD119-38A1-11D6-81CD-00C15069EBD8}"_guid;
inline constexpr Guid EditorService = "{9DC52448-9D3E-4DFA-AC07-74AD5E1BFA62}"_guid;
inline constexpr Guid SourceViewer = "{654BBB46-8848-4D7A-BD93-0B77D291FF3D}"_guid;
inline constexpr Guid DisassemblyViewer = "{D686DDAD-CA43-456F-8619-14939B95D276}"_guid;
inline constexpr Guid PositionMarker = "{400AAFBA-2A8A-4E41-9D06-169721DF06AE}"_guid;
inline constexpr Guid PostMessageService = "{0204D231-F0A5-4C81-BD11-E18149832E0B}"_guid;
inline constexpr Guid FileMonitor = "{7982942C-A05A-4C99-9656-7CB043302DA7}"_guid;
inline constexpr Guid RecentListService = "{374027C8-E512-4DB2-8531-38B08B323CF9}"_guid;
inline constexpr Guid ToolRegistry = "{52928807-D509-11D4-BE80-00C04F794B59}"_guid;
inline constexpr Guid SessionHost = "{80218733-0B17-4A5D-B971-5F783F93036C}"_guid;
inline constexpr Guid ForwardTarget = "{8B1C7AA0-2E92-11D5-A5D8-0000E2257DCD}"_guid;
inline constexpr Guid PlatformSymbolsQuery = "{BCA5283E-5208-4B96-9778-8D9B41D3DB93}"_guid;
// The workbench's console question and message box: on this system a service
// of its own, since there is no windowing layer to call directly.
// Progress of long tasks on the terminal, with the user's cancel.
inline constexpr Guid ProgressDisplay = "{B3A7C2E1-4D5F-4A8B-9E6C-1F2A3B4C5D6E}"_guid;
inline constexpr Guid MessageBoxService = "{5E0F2C3A-7B41-4D6E-9A12-3C8D4F6B7E21}"_guid;

// Platform services.
inline constexpr Guid PlatformList = "{00427BD2-64AC-4530-82D5-026CA71E666B}"_guid;
inline constexpr Guid DriverFactory = "{3C4A2BB6-B312-4942-94EA-B5335770F841}"_guid;
inline constexpr Guid IQPlatformRegisters = "{BFA8B2C0-E306-11D4-8BBC-444553540000}"_guid;
inline constexpr Guid ConnectionListener = "{89194D47-DA5E-40D3-8AC0-661B13DA561D}"_guid;
inline constexpr Guid CpuDetails = "{A8495748-DE13-11D3-8AF5-00AA0026624A}"_guid;
inline constexpr Guid CpuOptions = "{F340B99E-0211-4E44-8335-3B81EFFD485B}"_guid;
inline constexpr Guid TargetCore = "{A8495749-DE13-11D3-8AF5-00AA0026624A}"_guid;
inline constexpr Guid TargetControl = "{03EB0575-C986-40D5-83E0-1C851A6BC6AF}"_guid;
inline constexpr Guid TargetKind = "{4584814B-9C48-4236-B962-FF6A99091A23}"_guid;
inline constexpr Guid TargetNames = "{8D110C25-EF72-4BF8-9A4D-3E101290A56E}"_guid;
inline constexpr Guid IQPlatformMemory = "{6EFF828C-0C86-11D5-80C1-00C04F68EAD7}"_guid;
inline constexpr Guid IQPlatformMemory2 = "{3994E320-E972-11D5-8BC2-0004E2013C71}"_guid;
inline constexpr Guid IQPlatformMemory3 = "{A03964D1-1510-4847-AB07-694BEB3CA3F6}"_guid;
inline constexpr Guid IQPlatformMemory4 = "{1B1704B0-EEE0-4771-94FC-3959BA8BAB48}"_guid;
inline constexpr Guid IQPlatformMemory5 = "{9939250E-7432-4201-805A-4943A9ED312F}"_guid;
inline constexpr Guid IQPlatformFunctions = "{D52AD687-2196-4D88-B911-DA73B50E3831}"_guid;
inline constexpr Guid IQPlatformFreeRun = "{D4E55FBC-F209-44AB-964E-7234754824B6}"_guid;

// Commands.
inline constexpr Guid IQCmdClient = "{0CEE2458-E2FC-45C4-AD14-9338AC377F2B}"_guid;
inline constexpr Guid IQCmdClient2 = "{76FDAC8B-D0C3-4365-BB64-56412E74A430}"_guid;
// The timing of the batch file being run is asked of the state's third version.
inline constexpr Guid TimingService = "{200F096A-7B88-4898-8D5C-4417370AC473}"_guid;

// Events.
inline constexpr Guid EVENT_TARGET_RUNNING = "{2289D0F8-1242-11D5-9690-00B0D0167C2F}"_guid;
inline constexpr Guid EVENT_TARGET_STOPPED = "{2289D0F9-1242-11D5-9690-00B0D0167C2F}"_guid;
inline constexpr Guid EVENT_SYMBOLS_CHANGED = "{2289D0FA-1242-11D5-9690-00B0D0167C2F}"_guid;
inline constexpr Guid EVENT_MEMORY_CHANGED = "{2289D0FB-1242-11D5-9690-00B0D0167C2F}"_guid;
inline constexpr Guid EVENT_REGISTER_CHANGED = "{2289D0FD-1242-11D5-9690-00B0D0167C2F}"_guid;
inline constexpr Guid EVENT_BREAK_LIST_CHANGED = "{2289D11A-1242-11D5-9690-00B0D0167C2F}"_guid;
inline constexpr Guid EVENT_MEMORY_MAP_CHANGED = "{2289D11D-1242-11D5-9690-00B0D0167C2F}"_guid;
inline constexpr Guid EVENT_PROGRAMS_CHANGED = "{2289D125-1242-11D5-9690-00B0D0167C2F}"_guid;
inline constexpr Guid EVENT_LABELS_CHANGED = "{2289D127-1242-11D5-9690-00B0D0167C2F}"_guid;
inline constexpr Guid EVENT_CONNECTED = "{2289D12E-1242-11D5-9690-00B0D0167C2F}"_guid;
inline constexpr Guid EVENT_DISCONNECTED = "{2289D130-1242-11D5-9690-00B0D0167C2F}"_guid;
inline constexpr Guid EVENT_SESSION_CHANGING = "{2289D131-1242-11D5-9690-00B0D0167C2F}"_guid;
inline constexpr Guid EVENT_PLATFORM_CHANGED = "{4A135B5C-8CD7-11D5-80DB-00C04F68EAD7}"_guid;
inline constexpr Guid EVENT_RADIX_CHANGED = "{34553FBB-CBBF-4EF1-BBAA-5C29633BF835}"_guid;
inline constexpr Guid EVENT_INITIALISING = "{1E34B075-1947-4B8D-9390-E13164012A9E}"_guid;
inline constexpr Guid EVENT_TARGET_RESET = "{83B5AC60-1C93-11D6-8BC2-0004E2013C71}"_guid;
inline constexpr Guid EVENT_BREAK_CHANGED = "{110BABEB-6DCB-4265-8236-8888EECAB6AB}"_guid;
inline constexpr Guid EVENT_MODULES_CHANGED = "{A70AFFAA-31C1-4961-8EF3-F7CD68BC1D82}"_guid;
inline constexpr Guid EVENT_BUILD_STARTED = "{990FC153-937A-4C1A-8637-C318E823CF6B}"_guid;
inline constexpr Guid EVENT_BUILD_FINISHED = "{180D10FF-E905-4B15-89EA-FA6D8B6A447B}"_guid;
inline constexpr Guid EVENT_BATCH_FINISHED = "{D31289B8-4989-4AE0-B4C0-03CB21329264}"_guid;
inline constexpr Guid EVENT_DISCONNECT_REQUEST = "{BCFF8BF0-45BB-44C1-9026-F9CB3EE88B94}"_guid;
inline constexpr Guid EVENT_DOWNLOAD_COMPLETE = "{7C4DA269-5064-448A-96AE-5FC1EDD53104}"_guid;
inline constexpr Guid EVENT_VIEW_REFRESH = "{3B755ACB-430C-461A-8E2D-547D1DC6AD2F}"_guid;

} // namespace Ids
