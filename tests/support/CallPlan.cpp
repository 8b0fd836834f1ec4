#include "tests/support/CallPlan.h"

namespace ta::test {

int CallPlan::Calls(const std::string& name) const {
    const auto found = m_counts.find(name);
    return found == m_counts.end() ? 0 : found->second;
}

void CallPlan::Reset() {
    *this = CallPlan();
}

bool CallPlan::Enter(const std::string& name) const {
    const int overall = ++m_total;
    const int ofName = ++m_counts[name];
    const bool fails = m_failing.contains({std::string(), overall}) ||
                       m_failing.contains({std::string(), kEveryCall}) ||
                       m_failing.contains({name, ofName}) || m_failing.contains({name, kEveryCall});
    for (const int n : {ofName, kEveryCall}) {
        if (const auto found = m_actions.find({name, n}); found != m_actions.end()) {
            // A copy, because the action may plan anew.
            const std::function<void()> action = found->second;
            action();
        }
    }
    return !fails;
}

}  // namespace ta::test
