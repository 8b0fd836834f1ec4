#pragma once

#include "platform/ConfigStore.h"

#include <optional>

/// Complete states of a store, each told from every other by a number that all its rows carry.
namespace ta::test {

/// Writes state `generation` (1 and up) over whatever state the store holds. Not packed.
void SaveGeneration(SMXCfgIO2& store, int generation);

/// The number of the state that the store holds: 0 when it holds nothing, nothing when it holds
/// no such state or a mixture.
std::optional<int> LoadGeneration(SMXCfgIO2& store);

}  // namespace ta::test
