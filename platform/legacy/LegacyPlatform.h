#pragma once
#include <string>

#include "boundary/interfaces/PlatformFunctions.h"
#include "platform/eval/ExpressionEvaluator.h"
#include "platform/legacy/LegacySymbols.h"
#include "platform/simdriver/SimPlatformMemory.h"

class SimTarget;

// The simulator as a platform of the older kind: plain C functions looked up
// by name, and the memory areas of its map.
//
// The functions take no argument that could say which target they act on, so
// they act on the one platform that is bound process-wide: only one
// function-name target can be connected at a time, and Bind refuses a second.
// Their failures leave a text that GetLastErrorText gives, such as "Address
// H'30000000 is not mapped". Main thread only, like every caller of them.
class LegacyPlatform final : public IQPlatformFunctions, public IQPlatformFreeRun
{
public:
    explicit LegacyPlatform(SimTarget& target);
    ~LegacyPlatform();
    LegacyPlatform(const LegacyPlatform&) = delete;
    LegacyPlatform& operator=(const LegacyPlatform&) = delete;

    // False when another platform is bound already.
    bool Bind();
    // The bound platform, or null.
    static LegacyPlatform* Current();
    // Kept process-wide so that a function called with nothing bound can say so.
    static void SetLastError(std::string text);

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    // Null and E_FAIL for a name the platform does not have.
    HRESULT GetFunction(const std::string& name, void*& pointer) override;
    // E_FAIL while nothing has failed.
    HRESULT GetLastErrorText(std::string& text) override;
    // One area a region. Index 0xFFFFFFFF gives the lowest start and the
    // highest end of all areas, as the memory manager's own bounds do.
    HRESULT GetAreaCount(uint32_t& count) override;
    HRESULT GetAreaBounds(uint32_t index, TargetAddress& start, TargetAddress& end) override;

    SimPlatformMemory& Memory() { return memory_; }
    LegacySymbols& Symbols() { return symbols_; }
    // Its current radix stays 16, the family's default.
    ExpressionEvaluator& Evaluator() { return evaluator_; }

private:
    SimTarget& target_;
    SimPlatformMemory memory_;
    LegacySymbols symbols_;
    ExpressionEvaluator evaluator_;
};
