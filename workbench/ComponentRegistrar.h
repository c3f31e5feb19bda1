#pragma once
#include <string>
#include <vector>

#include "boundary/interfaces/Workbench.h"

// What components tell the workbench when they are registered: their display
// names, identities and the session data types they own.
class ComponentRegistrar : public IQRegistrar
{
public:
    struct Component {
        std::string name;
        Guid identity;
        std::vector<Guid> dataTypes;
    };
    struct DataType {
        std::string name;
        Guid id;
    };

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    HRESULT RegisterComponent(const std::string& name, int32_t count, const Guid* const* ids, int32_t a,
                              int32_t b, int32_t c, const Guid& identity) override;
    HRESULT RegisterDataType(const std::string& name, int32_t a, int32_t b, int32_t c,
                             const Guid& id) override;

    const std::vector<Component>& Components() const { return components_; }
    const std::vector<DataType>& DataTypes() const { return dataTypes_; }
    // Display name of a component by identity; empty when unknown.
    std::string NameOf(const Guid& identity) const;

private:
    std::vector<Component> components_;
    std::vector<DataType> dataTypes_;
};
