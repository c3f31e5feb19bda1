#include "component/command/CCmdEvaluate.h"

#include "boundary/Ids.h"
#include "boundary/interfaces/Component.h"

CCmdEvaluate::CCmdEvaluate(IQServiceRegistry* host) : CCmd(host, true, "evaluate", "ev", "<expression>") {}

HRESULT CCmdEvaluate::Run(const std::string& text, std::string& message, bool& continuing)
{
    continuing = false;
    message.clear();
    IQEvaluator2* evaluator = Evaluator.Interface();
    if (evaluator == nullptr)
        return E_FAIL;
    // The whole text is the expression: blanks inside it belong to it.
    int64_t value = 0;
    HRESULT hr = evaluator->TextToInt64Radix(text, 0, value);
    if (Failed(hr)) {
        if (auto* reporter = QueryAs<IQErrorReporter>(evaluator, Ids::IQErrorReporter))
            reporter->GetErrorText(hr, message);
        return hr;
    }
    const auto bits = static_cast<uint64_t>(value);
    std::string line;
    auto add = [&](HRESULT formatted) {
        if (Succeeded(formatted)) {
            if (!message.empty())
                message += "\n";
            message += line;
        }
    };
    add(evaluator->UInt64ToText(bits, 16, line));
    add(evaluator->UInt64ToText(bits, 10, line));
    if (value < 0)
        add(evaluator->Int64ToText(value, 10, line));
    add(evaluator->UInt64ToText(bits, 8, line));
    add(evaluator->UInt64ToText(bits, 2, line));
    return S_OK;
}
