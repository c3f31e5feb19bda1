#include "workbench/ComponentRegistrar.h"

#include "boundary/Ids.h"

HRESULT ComponentRegistrar::QueryInterface(const Guid& iid, void** out)
{
    return AnswerFrom({Ids::IUnknown}, iid, static_cast<IQRegistrar*>(this), out);
}

HRESULT ComponentRegistrar::RegisterComponent(const std::string& name, int32_t count, const Guid* const* ids,
                                              int32_t, int32_t, int32_t, const Guid& identity)
{
    if (count < 0 || (count > 0 && ids == nullptr))
        return E_INVALIDARG;
    Component c{name, identity, {}};
    for (int32_t i = 0; i < count; ++i)
        if (ids[i] != nullptr)
            c.dataTypes.push_back(*ids[i]);
    // Registering again replaces what the component said before.
    for (auto& existing : components_) {
        if (existing.identity == identity) {
            existing = std::move(c);
            return S_OK;
        }
    }
    components_.push_back(std::move(c));
    return S_OK;
}

HRESULT ComponentRegistrar::RegisterDataType(const std::string& name, int32_t, int32_t, int32_t,
                                             const Guid& id)
{
    for (auto& existing : dataTypes_) {
        if (existing.id == id) {
            existing.name = name;
            return S_OK;
        }
    }
    dataTypes_.push_back({name, id});
    return S_OK;
}

std::string ComponentRegistrar::NameOf(const Guid& identity) const
{
    for (const auto& c : components_)
        if (c.identity == identity)
            return c.name;
    return {};
}
