#pragma once
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "boundary/Ids.h"
#include "boundary/interfaces/LabelManager.h"
#include "boundary/interfaces/ObjectReader.h"
#include "boundary/interfaces/Platform.h"
#include "boundary/interfaces/Workbench.h"
#include "support/Recording.h"

// How the fake reader's next task ends.
struct ReaderScript {
    int32_t status = TASK_DONE;
    HRESULT code = S_OK;
    // The user stops the task while it runs, through the progress display.
    bool userCancels = false;
    // A verify or verifying load finds a difference: address, in memory, in file.
    std::optional<std::tuple<uint32_t, int32_t, int32_t>> mismatch;
    std::vector<std::pair<uint32_t, uint32_t>> areas = {{0x1000, 0x1FFF}};
    // Given to the label manager during a load.
    std::string label = "_main";
};

// A reader factory whose readers do what the script says and log it, as
// "Load <mode> <file>", "Save <file> 0x<start>-0x<end>", "Verify <file>";
// readers given back log "Release reader".
class FakeObjectReaders : public IQDriverFactory
{
public:
    FakeObjectReaders(CallLog& log, IQServiceRegistry& registry);
    ~FakeObjectReaders();
    FAKE_WITHOUT_INTERFACES

    using In = const std::string&;
    using Reg = IQServiceRegistry*;
    using I = int32_t;
    // clang-format off
    HRESULT ReleaseDriver(IUnknown*, I) override { return log.push_back("Release reader"), S_OK; }
    HRESULT CreateCpuDriver(In, Reg, I, I, I, IUnknown**) override { return E_NOTIMPL; }
    HRESULT CreateTargetDriver(In, Reg, I, I, I, IUnknown**) override { return E_NOTIMPL; }
    HRESULT CreateReader(In name, Reg, I, I, I, I, IUnknown** out) override;
    HRESULT CheckCpuDriver(In, I, I) override { return E_NOTIMPL; }
    HRESULT CheckTargetDriver(In, I, I) override { return E_NOTIMPL; }
    HRESULT CheckReader(In name, I, I) override { return name == "nosuch" ? E_FAIL : S_OK; }
    HRESULT CreateCpuDriverFor(In, Reg, I, I, I, In, IUnknown**) override { return E_NOTIMPL; }
    HRESULT CreateReaderFor(In, Reg, I, I, I, I, In, IUnknown**) override { return E_NOTIMPL; }
    HRESULT CheckCpuDriverFor(In, I, I, In) override { return E_NOTIMPL; }
    HRESULT CheckReaderFor(In, I, I, In) override { return E_NOTIMPL; }
    // clang-format on

    ReaderScript script;
    CallLog& log;
    IQServiceRegistry& registry;

private:
    struct Reader;
    struct Module;
    std::vector<std::unique_ptr<Reader>> readers_;
};
