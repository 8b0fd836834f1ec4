#include "platform/ui/ComponentFont.h"

#include <QApplication>

QFont CComponentComFont::GetComponentComFont() {
    return QApplication::font();
}
