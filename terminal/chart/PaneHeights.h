#pragma once

#include <QObject>

#include <map>
#include <vector>

namespace ta::terminal {

/// How the user has shared the height of a chart among the panes of each group. All charts of a
/// group follow.
class PaneHeights : public QObject {
    Q_OBJECT

public:
    /// By the group's panes: parts of the chart's height; 0 for a pane that nobody has sized.
    using Shares = std::vector<double>;

    using QObject::QObject;

    /// `group` is a UniNum. Empty for a group with heights of the terminal's own.
    Shares Of(int group) const;
    /// Empty for the terminal's own.
    void Set(int group, const Shares& shares);
    const std::map<int, Shares>& All() const { return m_shares; }

signals:
    void changed(int group);

private:
    std::map<int, Shares> m_shares;
};

}  // namespace ta::terminal
