#pragma once

#include "platform/Types.h"

#include <cstddef>
#include <vector>

class QListWidget;
class QListWidgetItem;

/// The list box of the groups: rows that carry the group's name in bytes and its UniNum.
namespace ta::sheet {

/// Whether no further group may be added; a negative maximum is no limit.
bool IsFull(std::size_t count, int maximum);

/// Fills the list with the repository's groups; nothing is selected.
void FillGroupRows(QListWidget& list);
/// Whether a row has more characters than so many.
bool HasLongRow(const QListWidget& list, int characters);
CString NameOfRow(const QListWidgetItem& row);
int UniNumOfRow(const QListWidgetItem& row);
/// The names from top to bottom.
std::vector<CString> NamesOfRows(const QListWidget& list);
/// The row of a group; the first row when there is none of that name, -1 in an empty list.
int RowOf(const QListWidget& list, const CString& name);

}  // namespace ta::sheet
