#pragma once

#include <functional>
#include <string>

namespace ta::data {

/// Gets one price file: its path under the data folder, with "/", and its whole text.
using PriceFileSink = std::function<void(const std::string& path, const std::string& text)>;

/// Makes every simulated price file of the sample catalogue. The prices are a random walk in whole
/// price steps, in integer arithmetic from a generator (SplitMix64) that is seeded by a
/// text per symbol, so that each run on each machine gives the same bytes.
void GenerateSamplePrices(const PriceFileSink& sink);

}  // namespace ta::data
