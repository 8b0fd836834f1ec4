#include "terminal/lang/Language.h"

#include <QCoreApplication>
#include <QLocale>

namespace ta::terminal {
namespace {

Language* g_instance = nullptr;

QString QmPath(Language::Id id) {
    return id == Language::English ? ":/lang/en.qm" : ":/lang/zh_TW.qm";
}

/// For the names of days and months in calendars, whatever the desktop's language is.
QLocale LocaleOf(Language::Id id) {
    return id == Language::English
               ? QLocale(QLocale::English, QLocale::UnitedStates)
               : QLocale(QLocale::Chinese, QLocale::TraditionalHanScript, QLocale::Taiwan);
}

}  // namespace

Language::Language(QObject* parent) : QObject(parent) {
    g_instance = this;
    Install(m_current);
}

Language::~Language() {
    QCoreApplication::removeTranslator(&m_translator);
    QLocale::setDefault(QLocale::system());
    g_instance = nullptr;
}

Language* Language::Instance() {
    return g_instance;
}

void Language::Select(Id id) {
    if (id == m_current) {
        return;
    }
    m_current = id;
    Install(id);
    emit changed();
}

void Language::Install(Id id) {
    QLocale::setDefault(LocaleOf(id));
    QCoreApplication::removeTranslator(&m_translator);
    if (m_translator.load(QmPath(id))) {
        QCoreApplication::installTranslator(&m_translator);
    }
}

}  // namespace ta::terminal
