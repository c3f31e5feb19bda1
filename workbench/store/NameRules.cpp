#include "workbench/store/NameRules.h"

namespace NameRules
{

std::string FoldCase(std::string_view name)
{
    std::string folded(name);
    for (char& c : folded)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return folded;
}

bool Check(std::string_view what, std::string_view name, std::string& error)
{
    if (name.empty()) {
        error = "A " + std::string(what) + " needs a name";
        return false;
    }
    for (size_t i = 0; i < name.size(); ++i) {
        const auto c = static_cast<unsigned char>(name[i]);
        const bool c1 = c == 0xC2 && i + 1 < name.size() && static_cast<unsigned char>(name[i + 1]) >= 0x80 &&
                        static_cast<unsigned char>(name[i + 1]) <= 0x9F;
        if (c < 0x20 || c == 0x7F || c1) {
            error = "The " + std::string(what) + " name may not hold control characters";
            return false;
        }
    }
    return true;
}

} // namespace NameRules
