#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>

#include "boundary/interfaces/Workbench.h"

// Result code to text, shared by every component of the workbench.
class ErrorTableService final : public IQErrorTable
{
public:
    ErrorTableService() = default;
    ErrorTableService(const ErrorTableService&) = delete;
    ErrorTableService& operator=(const ErrorTableService&) = delete;

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    HRESULT GetText(HRESULT code, std::string& text) override;
    // Replaces an existing text: whether to keep the old one is the caller's call.
    HRESULT AddText(HRESULT code, const std::string& text) override;
    HRESULT RegisterErrorText(const std::string& text, HRESULT& code) override;
    HRESULT RemoveText(HRESULT code) override;

    size_t Size() const { return texts_.size(); }

private:
    static constexpr uint32_t kFirstRegistered = 0x8004F000u;
    static constexpr uint32_t kLastRegistered = 0x8004FFFFu;
    std::unordered_map<HRESULT, std::string> texts_;
    uint32_t nextCode_ = kFirstRegistered;
};
