#include "terminal/entitlement/TerminalEntitlement.h"

#include <QSettings>

namespace ta::terminal {
namespace {

struct FunctionKey {
    Function function;
    const char* key;
};

constexpr FunctionKey kFunctionKeys[] = {
    {Function::TaGroups, "taGroups"},
    {Function::TaGroupEditing, "taGroupEditing"},
    {Function::AdvancedStudies, "advancedStudies"},
    {Function::SecondData, "secondData"},
};

}  // namespace

TerminalEntitlement::TerminalEntitlement(const QString& iniFile) {
    if (iniFile.isEmpty()) {
        return;
    }
    QSettings file(iniFile, QSettings::IniFormat);
    file.beginGroup("entitlement");
    for (const FunctionKey& row : kFunctionKeys) {
        if (!file.value(row.key, true).toBool()) {
            m_denied.insert(row.function);
        }
    }
    m_trendLinesInAll = file.value("trendLinesInAll", m_trendLinesInAll).toInt();
    m_trendLinesPerSymbol = file.value("trendLinesPerSymbol", m_trendLinesPerSymbol).toInt();
}

bool TerminalEntitlement::bIsFunctionAllowed(Function function) const {
    return !m_denied.contains(function);
}

bool TerminalEntitlement::bIsSecondDataAllowed(unsigned char) const {
    return bIsFunctionAllowed(Function::SecondData);
}

void TerminalEntitlement::GetTATrendLineMaxCount(int& inAll, int& perSymbol) const {
    inAll = m_trendLinesInAll;
    perSymbol = m_trendLinesPerSymbol;
}

}  // namespace ta::terminal
