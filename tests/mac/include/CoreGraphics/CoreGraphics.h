#pragma once

#include <cstdint>

using CGEventSourceStateID = std::int32_t;
using CGEventType = std::uint32_t;

constexpr CGEventSourceStateID kCGEventSourceStateHIDSystemState = 1;
constexpr CGEventType kCGAnyInputEventType = ~CGEventType{0};

extern "C" double CGEventSourceSecondsSinceLastEventType(CGEventSourceStateID state, CGEventType type);
