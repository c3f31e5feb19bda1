#include <gtest/gtest.h>

#include "boundary/Ids.h"
#include "workbench/EvaluatorHost.h"
#include "workbench/ServiceRegistry.h"

namespace
{

// Only identity matters here: the host never calls an evaluator.
struct StubEvaluator : IQEvaluator2 {
    HRESULT QueryInterface(const Guid&, void**) override { return E_NOINTERFACE; }
    TESSEL_NOT_REFCOUNTED
    HRESULT GetRadix(int32_t&) override { return E_FAIL; }
    HRESULT SetRadix(int32_t) override { return E_FAIL; }
    HRESULT TextToAddress(const std::string&, uint32_t&) override { return E_FAIL; }
    HRESULT TextToAddressRadix(const std::string&, int32_t, uint32_t&) override { return E_FAIL; }
    HRESULT TextToUInt8(const std::string&, uint8_t&) override { return E_FAIL; }
    HRESULT TextToUInt8Radix(const std::string&, int32_t, uint8_t&) override { return E_FAIL; }
    HRESULT TextToUInt16(const std::string&, uint16_t&) override { return E_FAIL; }
    HRESULT TextToUInt16Radix(const std::string&, int32_t, uint16_t&) override { return E_FAIL; }
    HRESULT TextToUInt32(const std::string&, uint32_t&) override { return E_FAIL; }
    HRESULT TextToUInt32Radix(const std::string&, int32_t, uint32_t&) override { return E_FAIL; }
    HRESULT TextToUInt64(const std::string&, uint64_t&) override { return E_FAIL; }
    HRESULT TextToUInt64Radix(const std::string&, int32_t, uint64_t&) override { return E_FAIL; }
    HRESULT TextToInt8(const std::string&, int8_t&) override { return E_FAIL; }
    HRESULT TextToInt8Radix(const std::string&, int32_t, int8_t&) override { return E_FAIL; }
    HRESULT TextToInt16(const std::string&, int16_t&) override { return E_FAIL; }
    HRESULT TextToInt16Radix(const std::string&, int32_t, int16_t&) override { return E_FAIL; }
    HRESULT TextToInt32(const std::string&, int32_t&) override { return E_FAIL; }
    HRESULT TextToInt32Radix(const std::string&, int32_t, int32_t&) override { return E_FAIL; }
    HRESULT TextToInt64(const std::string&, int64_t&) override { return E_FAIL; }
    HRESULT TextToInt64Radix(const std::string&, int32_t, int64_t&) override { return E_FAIL; }
    HRESULT AddressToText(uint32_t, int32_t, VariantBool, std::string&) override { return E_FAIL; }
    HRESULT AddressToTextHex(uint32_t, VariantBool, std::string&) override { return E_FAIL; }
    HRESULT UInt8ToText(uint8_t, int32_t, std::string&) override { return E_FAIL; }
    HRESULT UInt16ToText(uint16_t, int32_t, std::string&) override { return E_FAIL; }
    HRESULT UInt32ToText(uint32_t, int32_t, std::string&) override { return E_FAIL; }
    HRESULT UInt64ToText(uint64_t, int32_t, std::string&) override { return E_FAIL; }
    HRESULT Int8ToText(int8_t, int32_t, std::string&) override { return E_FAIL; }
    HRESULT Int16ToText(int16_t, int32_t, std::string&) override { return E_FAIL; }
    HRESULT Int32ToText(int32_t, int32_t, std::string&) override { return E_FAIL; }
    HRESULT Int64ToText(int64_t, int32_t, std::string&) override { return E_FAIL; }
    HRESULT TextToFloat(const std::string&, float&) override { return E_FAIL; }
    HRESULT TextToDouble(const std::string&, double&) override { return E_FAIL; }
    HRESULT FloatToText(float, int32_t, std::string&) override { return E_FAIL; }
    HRESULT DoubleToText(double, int32_t, std::string&) override { return E_FAIL; }
    HRESULT FormatAddress(uint32_t, VariantBool, VariantBool, VariantBool, std::string&) override
    {
        return E_FAIL;
    }
};

IQEvaluator2* Current(ServiceRegistry& registry)
{
    return GetServiceAs<IQEvaluator2>(&registry, Ids::IQEvaluator2);
}

TEST(EvaluatorHost, ASessionEvaluatorCoversThePlatformsUntilCleared)
{
    ServiceRegistry registry;
    EvaluatorHost host(registry);
    StubEvaluator platform, session;
    registry.RegisterService(Ids::IQEvaluator2, &platform);

    EXPECT_EQ(host.SetEvaluator(&session), S_OK);
    EXPECT_EQ(Current(registry), &session);
    EXPECT_EQ(host.ClearEvaluator(), S_OK);
    EXPECT_EQ(Current(registry), &platform);
    // Nothing left in front: clearing again changes nothing.
    EXPECT_EQ(host.ClearEvaluator(), S_FALSE);
    EXPECT_EQ(Current(registry), &platform);
}

TEST(EvaluatorHost, WithoutAPlatformEvaluatorClearingLeavesNone)
{
    ServiceRegistry registry;
    EvaluatorHost host(registry);
    StubEvaluator session;
    host.SetEvaluator(&session);
    host.SetEvaluator(&session);
    host.ClearEvaluator();
    EXPECT_EQ(Current(registry), nullptr);
    EXPECT_EQ(host.SetEvaluator(nullptr), E_POINTER);
}

TEST(EvaluatorHost, AnEvaluatorRegisteredMeanwhileIsNotTakenAway)
{
    ServiceRegistry registry;
    EvaluatorHost host(registry);
    StubEvaluator platform, session, later;
    registry.RegisterService(Ids::IQEvaluator2, &platform);
    host.SetEvaluator(&session);
    registry.RegisterService(Ids::IQEvaluator2, &later);
    host.ClearEvaluator();
    EXPECT_EQ(Current(registry), &later);
}

} // namespace
