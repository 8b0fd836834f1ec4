#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <vector>

namespace ta::bench {

/// Runs `ours` and `peer` in turns, after an unmeasured `prepare`, and reports the median of each
/// in microseconds, and how many times the peer's ours is. What disturbs the machine meanwhile
/// disturbs both.
template <typename Prepare, typename Ours, typename Peer>
void RunSideBySide(benchmark::State& state, Prepare prepare, Ours ours, Peer peer) {
    using Clock = std::chrono::steady_clock;
    std::vector<double> times[2];
    const auto run = [&](std::vector<double>& into, auto& work) {
        const auto start = Clock::now();
        work();
        into.push_back(std::chrono::duration<double, std::micro>(Clock::now() - start).count());
    };
    for ([[maybe_unused]] auto iteration : state) {
        prepare();
        run(times[0], ours);
        run(times[1], peer);
    }
    const auto median = [](std::vector<double>& values) {
        const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
        std::nth_element(values.begin(), middle, values.end());
        return *middle;
    };
    const double oursTime = median(times[0]);
    const double peerTime = median(times[1]);
    state.counters["ours_us"] = oursTime;
    state.counters["peer_us"] = peerTime;
    state.counters["ratio"] = oursTime / peerTime;
}

template <typename Ours, typename Peer>
void RunSideBySide(benchmark::State& state, Ours ours, Peer peer) {
    RunSideBySide(
        state, [] {}, ours, peer);
}

}  // namespace ta::bench
