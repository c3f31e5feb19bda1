#include "platform/objfile/ObjectCodes.h"

#include "boundary/HResult.h"

std::string ObjectCodeText(HRESULT code)
{
    switch (code) {
    case QE_FILE_NOT_FOUND:
        return "File not found";
    case QE_FILE_READ:
        return "File Read error";
    case OE_NOT_ENOUGH_MEMORY:
        return "Not enough memory";
    case OE_FILE_WRITE:
        return "File Write error";
    case OE_INVALID_PARAMETER:
        return "Invalid parameter";
    case OE_MODULE_VERSION:
        return "Incorrect object module version";
    case OE_MODULE_FORMAT:
        return "Incorrect object module format";
    case OE_MODULE_NOT_ABSOLUTE:
        return "Object module not absolute format";
    case OE_MODULE_CPU:
        return "Incorrect object module cpu";
    case OE_LINE_NO_ADDRESS:
        return "Line doesn't have a address";
    case OE_LINE_NOT_FOUND:
        return "Line not found";
    case OE_FUNCTION_NOT_FOUND:
        return "Function name not found";
    case OE_NOT_FOUND:
        return "Not found";
    case OE_USER_ABORTED:
        return "User aborted";
    case OE_VERIFY_FAILED:
        return "Verify failed";
    case OE_READ_FAILED:
        return "Can not read memory";
    case OE_WRITE_FAILED:
        return "Can not write memory";
    case QE_NOT_IMPLEMENTED:
        return "Not implemented";
    default:
        return {};
    }
}

HRESULT ObjectErrorText(HRESULT code, std::string& text)
{
    text = ObjectCodeText(code);
    return text.empty() ? E_FAIL : S_OK;
}
