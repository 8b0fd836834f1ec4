#include "terminal/frame/PaneHeightFile.h"

#include "settings/Repository.h"
#include "terminal/chart/PaneHeights.h"

#include <QSettings>
#include <QStringList>

#include <algorithm>

namespace ta::terminal {
namespace {

constexpr const char* kSection = "paneHeights";

/// "0.5/0.25/0.25"; nothing for a text that is none.
PaneHeights::Shares ReadShares(const QString& text) {
    PaneHeights::Shares shares;
    for (const QString& part : text.split('/')) {
        bool isNumber = false;
        const double share = part.toDouble(&isNumber);
        if (!isNumber || !(share >= 0 && share <= 1)) {
            return {};
        }
        shares.push_back(share);
    }
    shares.resize(std::min<std::size_t>(shares.size(), kPaneCount));
    return shares;
}

QString SharesText(const PaneHeights::Shares& shares) {
    QStringList texts;
    for (const double share : shares) {
        texts << QString::number(share, 'f', 4);
    }
    return texts.join('/');
}

}  // namespace

void LoadPaneHeights(const QString& path, PaneHeights& heights) {
    QSettings file(path, QSettings::IniFormat);
    file.beginGroup(kSection);
    for (const QString& key : file.childKeys()) {
        bool isNumber = false;
        const int group = key.toInt(&isNumber);
        if (isNumber) {
            heights.Set(group, ReadShares(file.value(key).toString()));
        }
    }
}

bool SavePaneHeights(const QString& path, const PaneHeights& heights) {
    QSettings file(path, QSettings::IniFormat);
    file.remove(kSection);
    file.beginGroup(kSection);
    for (const auto& [group, shares] : heights.All()) {
        if (Repository().GetGroupIndexByUniNum(group) >= 0) {
            file.setValue(QString::number(group), SharesText(shares));
        }
    }
    file.endGroup();
    file.sync();
    return file.status() == QSettings::NoError;
}

}  // namespace ta::terminal
