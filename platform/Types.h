#pragma once

#include <cstdint>
#include <string>

/// Narrow text in the bytes of the user's code page (see platform/Text.h). Lengths and order are
/// those of the bytes.
using CString = std::string;

/// A study (indicator) of the chart module, as the 32-bit number that settings and files carry.
/// -1 is an empty slot.
using StudyType = std::int32_t;

constexpr StudyType kNoStudy = -1;

/// Every group has this many panes, each with this many study slots.
constexpr int kPaneCount = 10;
constexpr int kSlotsPerPane = 8;
