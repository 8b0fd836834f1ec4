#include "tour/Guide.h"
#include "tour/Steps.h"

#include <QLineEdit>
#include <QRadioButton>

namespace ta::tour {
namespace {

void ShowHistory(Guide& guide, const QString& language) {
    guide.Choose(Command::HistoryData, {[&](QWidget& dialog) {
                                            guide.Picture("history-data-" + language);
                                            Push(dialog, "sinceRadio");
                                            guide.Picture("history-data-since-" + language);
                                            Push(dialog, "readRadio");
                                            Find<QLineEdit>(dialog, "countEdit").selectAll();
                                            Type(Find<QLineEdit>(dialog, "countEdit"), "10");
                                            Push(dialog, "okButton");
                                            Dismiss(dialog);
                                        },
                                        [&](QWidget& message) {
                                            guide.Picture("history-data-limits-" + language);
                                            Confirm(message);
                                        }});
}

void ShowInChinese(Guide& guide) {
    ShowHistory(guide, "zh");
}

void ShowInEnglish(Guide& guide) {
    guide.Choose(Command::English);
    ShowHistory(guide, "en");
    guide.Choose(Command::Chinese);
}

}  // namespace

std::vector<Step> DataSteps() {
    return {{"data in Chinese", ShowInChinese}, {"data in English", ShowInEnglish}};
}

}  // namespace ta::tour
