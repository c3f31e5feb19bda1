#include "app/WorkspaceSession.h"

#include <strings.h>

#include <algorithm>
#include <filesystem>
#include <ostream>

#include "boundary/ComUtils.h"
#include "boundary/Ids.h"
#include "platform/sim/SimDevice.h"
#include "platform/simdriver/SimSessionDevice.h"
#include "workbench/ServiceRegistry.h"

namespace fs = std::filesystem;

WorkspaceSession::WorkspaceSession(ServiceRegistry& registry, std::ostream& err)
    : registry_(registry), err_(err)
{
}

WorkspaceSession::~WorkspaceSession()
{
    if (info_)
        registry_.UnregisterService(Ids::IQWorkspaceInfo, static_cast<IQWorkspaceInfo*>(info_.get()));
    if (store_)
        store_->Unregister(registry_);
}

bool WorkspaceSession::ParseTiming(const std::string& text, int32_t& timing)
{
    static const std::pair<const char*, int32_t> names[] = {
        {"0", 0}, {"connection", 0},     {"1", 1}, {"before-download", 1},
        {"2", 2}, {"after-download", 2}, {"3", 3}, {"after-reset", 3},
    };
    for (const auto& [name, value] : names) {
        if (strcasecmp(text.c_str(), name) == 0) {
            timing = value;
            return true;
        }
    }
    return false;
}

bool WorkspaceSession::Open(const SessionOptions& options, const std::string& installDirectory,
                            std::string& error)
{
    std::error_code ec;
    fs::path folder = options.workspace.empty() ? fs::current_path(ec) : fs::absolute(options.workspace, ec);
    // Read as the simulator will read it at each connection, so that a bad
    // choice is refused before anything is stored.
    if (options.device && !SimDevice::Configure(*options.device, folder.string(), {}, error))
        return false;
    std::string problem;
    if (!model_.Open(folder, problem)) {
        err_ << "Error: " << problem << "\n";
        ++problems_;
    }
    store_ = std::make_unique<SettingsStore>(model_.SharedDatabase());
    if (!store_->LastError().empty() && model_.SharedDatabase() != nullptr) {
        err_ << "Error: " << store_->LastError() << "\n";
        ++problems_;
    }
    store_->Register(registry_);
    info_ = std::make_unique<WorkspaceInfoService>(model_, installDirectory);
    registry_.RegisterService(Ids::IQWorkspaceInfo, static_cast<IQWorkspaceInfo*>(info_.get()));

    ActiveSession key = model_.Active();
    if (!options.session.empty()) {
        auto sessions = model_.Sessions(key.project);
        bool known = std::any_of(sessions.begin(), sessions.end(), [&](const std::string& s) {
            return strcasecmp(s.c_str(), options.session.c_str()) == 0;
        });
        if ((!known && !model_.AddSession(key.project, options.session, error)) ||
            !model_.SetActive(key.project, key.configuration, options.session, error))
            return false;
        key = model_.Active();
    }
    if (!options.platform.empty() &&
        Failed(store_->SetPlatform(key.workspace, key.project, key.session, options.platform))) {
        error = "Cannot store the platform: " + store_->LastError();
        return false;
    }
    if (options.holdMemory >= 0 && Failed(store_->SetDisableMemoryUntilBatch(
                                       key.workspace, key.project, key.session, options.holdMemory))) {
        error = "Cannot store the memory option: " + store_->LastError();
        return false;
    }
    if (options.resetAfterDownload >= 0 &&
        Failed(store_->SetProperty("RESET_CPU_AFTER_DOWNLOAD_TAG",
                                   options.resetAfterDownload == 1 ? "VARIANT_TRUE_STORE_TAG"
                                                                   : "VARIANT_FALSE_STORE_TAG",
                                   key.workspace, key.project, key.session))) {
        error = "Cannot store the reset option: " + store_->LastError();
        return false;
    }
    if (options.device && Failed(store_->SetProperty(SimSessionDevice::kTag, *options.device, key.workspace,
                                                     key.project, key.session))) {
        error = "Cannot store the device: " + store_->LastError();
        return false;
    }
    if (!options.batches.empty()) {
        // Kept as given: a placeholder such as $(WORKSPDIR) is expanded at each use.
        HRESULT hr =
            store_->UpdateCommandFiles(key.workspace, key.project, key.session, [&](Variant& stored) {
                auto records = CComUtils::VariantToRecords(stored, 2);
                for (const auto& [timing, file] : options.batches) {
                    std::vector<std::string> record{file, std::to_string(timing)};
                    if (std::find(records.begin(), records.end(), record) == records.end())
                        records.push_back(record);
                }
                stored = CComUtils::RecordsToVariant(records);
            });
        if (Failed(hr)) {
            error = "Cannot store the batch files: " + store_->LastError();
            return false;
        }
    }
    return true;
}

std::string WorkspaceSession::HistoryFile() const
{
    if (model_.Folder().empty() || model_.InMemory())
        return {};
    return (model_.Folder() / ".tessel" / "history").string();
}
