#pragma once

#include "platform/Types.h"

class ChartBaseDrawInfo;

/// Words for the internal codes of the settings.
namespace ta::settings {

/// The display name that `drawInfo` knows for the study, from the lowest category; empty when none.
CString StudyName(const ChartBaseDrawInfo& drawInfo, StudyType type);

/// The study of a display name, which may be decorated as in a legend ("*(MACD-12,26,9)"); 0 when
/// none has it.
StudyType StudyOfName(const ChartBaseDrawInfo& drawInfo, const CString& name);

/// "日", "5分": the short label of a data period; empty for an unknown code.
CString DataPeriodLabel(int periodCode, int count);

/// The text before the first "###"; the whole text when there is none.
CString LayoutDisplayName(const CString& stored);

}  // namespace ta::settings
