#include "component/symbols/CPDEvaluator.h"

#include "boundary/Ids.h"
#include "component/util/ObjectSerial.h"

// Number texts arrive with the evaluator proper; until then a caller gets the
// error table's "Not implemented".
static constexpr HRESULT kFormattingNotBuilt = QE_NOT_IMPLEMENTED;

CPDEvaluator::CPDEvaluator(IQServiceRegistry* registry, CDebuggerState& state)
    : registry_(registry), state_(state), serial_(NextObjectSerial())
{
}

HRESULT CPDEvaluator::QueryInterface(const Guid& iid, void** out)
{
    return AnswerFrom({Ids::IUnknown, Ids::IQEvaluator, Ids::IQEvaluator2}, iid,
                      static_cast<IQEvaluator2*>(this), out);
}

HRESULT CPDEvaluator::GetRadix(int32_t& radix)
{
    radix = radix_;
    return S_OK;
}

HRESULT CPDEvaluator::SetRadix(int32_t radix)
{
    radix_ = radix;
    if (registry_ != nullptr)
        registry_->Broadcast(Event{Ids::EVENT_RADIX_CHANGED, 0});
    return S_OK;
}

HRESULT CPDEvaluator::TextToAddress(const std::string&, uint32_t&)
{
    return E_FAIL;
}
HRESULT CPDEvaluator::TextToAddressRadix(const std::string&, int32_t, uint32_t&)
{
    return E_FAIL;
}
HRESULT CPDEvaluator::TextToUInt8(const std::string&, uint8_t&)
{
    return E_FAIL;
}
HRESULT CPDEvaluator::TextToUInt8Radix(const std::string&, int32_t, uint8_t&)
{
    return E_FAIL;
}
HRESULT CPDEvaluator::TextToUInt16(const std::string&, uint16_t&)
{
    return E_FAIL;
}
HRESULT CPDEvaluator::TextToUInt16Radix(const std::string&, int32_t, uint16_t&)
{
    return E_FAIL;
}
HRESULT CPDEvaluator::TextToUInt32(const std::string&, uint32_t&)
{
    return E_FAIL;
}
HRESULT CPDEvaluator::TextToUInt32Radix(const std::string&, int32_t, uint32_t&)
{
    return E_FAIL;
}
HRESULT CPDEvaluator::TextToUInt64(const std::string&, uint64_t&)
{
    return E_FAIL;
}
HRESULT CPDEvaluator::TextToUInt64Radix(const std::string&, int32_t, uint64_t&)
{
    return E_FAIL;
}
HRESULT CPDEvaluator::TextToInt8(const std::string&, int8_t&)
{
    return E_FAIL;
}
HRESULT CPDEvaluator::TextToInt8Radix(const std::string&, int32_t, int8_t&)
{
    return E_FAIL;
}
HRESULT CPDEvaluator::TextToInt16(const std::string&, int16_t&)
{
    return E_FAIL;
}
HRESULT CPDEvaluator::TextToInt16Radix(const std::string&, int32_t, int16_t&)
{
    return E_FAIL;
}
HRESULT CPDEvaluator::TextToInt32(const std::string&, int32_t&)
{
    return E_FAIL;
}
HRESULT CPDEvaluator::TextToInt32Radix(const std::string&, int32_t, int32_t&)
{
    return E_FAIL;
}
HRESULT CPDEvaluator::TextToInt64(const std::string&, int64_t&)
{
    return E_FAIL;
}
HRESULT CPDEvaluator::TextToInt64Radix(const std::string&, int32_t, int64_t&)
{
    return E_FAIL;
}
HRESULT CPDEvaluator::AddressToText(uint32_t, int32_t, VariantBool, std::string&)
{
    return kFormattingNotBuilt;
}
HRESULT CPDEvaluator::AddressToTextHex(uint32_t, VariantBool, std::string&)
{
    return kFormattingNotBuilt;
}
HRESULT CPDEvaluator::UInt8ToText(uint8_t, int32_t, std::string&)
{
    return kFormattingNotBuilt;
}
HRESULT CPDEvaluator::UInt16ToText(uint16_t, int32_t, std::string&)
{
    return kFormattingNotBuilt;
}
HRESULT CPDEvaluator::UInt32ToText(uint32_t, int32_t, std::string&)
{
    return kFormattingNotBuilt;
}
HRESULT CPDEvaluator::UInt64ToText(uint64_t, int32_t, std::string&)
{
    return kFormattingNotBuilt;
}
HRESULT CPDEvaluator::Int8ToText(int8_t, int32_t, std::string&)
{
    return kFormattingNotBuilt;
}
HRESULT CPDEvaluator::Int16ToText(int16_t, int32_t, std::string&)
{
    return kFormattingNotBuilt;
}
HRESULT CPDEvaluator::Int32ToText(int32_t, int32_t, std::string&)
{
    return kFormattingNotBuilt;
}
HRESULT CPDEvaluator::Int64ToText(int64_t, int32_t, std::string&)
{
    return kFormattingNotBuilt;
}
HRESULT CPDEvaluator::TextToFloat(const std::string&, float&)
{
    return E_FAIL;
}
HRESULT CPDEvaluator::TextToDouble(const std::string&, double&)
{
    return E_FAIL;
}
HRESULT CPDEvaluator::FloatToText(float, int32_t, std::string&)
{
    return kFormattingNotBuilt;
}
HRESULT CPDEvaluator::DoubleToText(double, int32_t, std::string&)
{
    return kFormattingNotBuilt;
}
HRESULT CPDEvaluator::FormatAddress(uint32_t, VariantBool, VariantBool, VariantBool, std::string&)
{
    return kFormattingNotBuilt;
}
