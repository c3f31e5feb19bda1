#pragma once
#include <cstdint>
#include <string>

#include "boundary/Unknown.h"

class CArg;

// The fixed messages of the command framework, filled in. parameterName goes
// into the message as given: commands pass it with its angle brackets
// ("<start>"), and the few that name a parameter otherwise pass that.

std::string MessageEmpty(const std::string& parameterName);
std::string MessageRange(const std::string& parameterName, uint64_t minimum, uint64_t maximum);
// raw: the token that matched no keyword; keywordList: "(a,b,c)".
std::string MessageKeywordNotFound(const std::string& raw, const std::string& keywordList);
std::string MessageInvalid(const std::string& parameterName);

// The message for a failed argument, with its Name, by its Error: empty for
// 2, range for 1 (number arguments), keyword not found for 3 (keyword
// arguments, with Raw and the keyword list), invalid for 4 and for an error
// the argument's kind cannot have. An argument that carries a Refusal gives
// that instead; one without an error gives an empty string.
std::string ArgumentMessage(const CArg& arg);

// The framework's fixed messages.
std::string MessageNotEnough();    // a required argument missing
std::string MessageTooMany();      // text left after the last argument
std::string MessageNotValid();     // a line that fits no form
std::string MessageUnknownError(); // a parse outcome no line can give
std::string MessageNotSupported(); // the platform lacks the operation

// What a failing manager says of its result, or "Unknown error code" with the
// number when it has no text for it.
std::string ErrorTextFor(IUnknown* failingObject, HRESULT hr);
