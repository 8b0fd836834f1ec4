#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>

namespace ta::test {

/// Counts the calls that a forwarding test double receives, and says which of them shall fail. The
/// doubles derive from it, so that a test plans on the double itself: `store.FailOnCall(3)`.
class CallPlan {
public:
    /// In place of a call's number: every call.
    static constexpr int kEveryCall = 0;

    /// Makes the n-th call (1: the first since the start or Reset) fail, counted over all
    /// operations, or over those of one name.
    void FailOnCall(int n) { m_failing.insert({std::string(), n}); }
    void FailOnCall(const std::string& name, int n) { m_failing.insert({name, n}); }
    /// Runs `action` before the n-th call of an operation is passed on.
    void RunBefore(const std::string& name, int n, std::function<void()> action) {
        m_actions[{name, n}] = std::move(action);
    }
    /// Calls received, over all operations or of one name.
    int Calls() const { return m_total; }
    int Calls(const std::string& name) const;
    /// Forgets the counts and everything planned.
    void Reset();

protected:
    /// Counts a call and runs what was planned before it; false when it shall fail. Const, because
    /// many interfaces have const operations.
    bool Enter(const std::string& name) const;

private:
    using Call = std::pair<std::string, int>;

    std::set<Call> m_failing;
    std::map<Call, std::function<void()>> m_actions;
    mutable std::map<std::string, int> m_counts;
    mutable int m_total = 0;
};

}  // namespace ta::test
