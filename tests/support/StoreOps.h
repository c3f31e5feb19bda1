#pragma once
#include <initializer_list>

#include "workbench/store/SettingsStore.h"

inline Variant StringList(std::initializer_list<const char*> texts)
{
    Variant v = Variant::Array(VT_ARRAY_BSTR);
    for (const char* t : texts)
        v.Elements().push_back(Variant::String(t));
    return v;
}
