#include "dialogs/SymbolTreeModel.h"

#include "platform/ui/TextBridge.h"

namespace ta::dialogs {

using compare::SymbolTree;

void SymbolTreeModel::SetTree(SymbolTree tree) {
    beginResetModel();
    m_tree = std::move(tree);
    endResetModel();
}

QModelIndex SymbolTreeModel::IndexOf(int node) const {
    return node == SymbolTree::kNone
               ? QModelIndex()
               : createIndex(m_tree.Row(node), 0, static_cast<quintptr>(node));
}

int SymbolTreeModel::NodeOf(const QModelIndex& index) {
    return index.isValid() ? static_cast<int>(index.internalId()) : SymbolTree::kNone;
}

QModelIndex SymbolTreeModel::index(int row, int column, const QModelIndex& parent) const {
    const int node = NodeOf(parent);
    const bool exists = column == 0 && row >= 0 && row < m_tree.ChildCount(node);
    return exists ? createIndex(row, 0, static_cast<quintptr>(m_tree.Child(node, row)))
                  : QModelIndex();
}

QModelIndex SymbolTreeModel::parent(const QModelIndex& index) const {
    return index.isValid() ? IndexOf(m_tree.Parent(NodeOf(index))) : QModelIndex();
}

int SymbolTreeModel::rowCount(const QModelIndex& parent) const {
    return m_tree.ChildCount(NodeOf(parent));
}

int SymbolTreeModel::columnCount(const QModelIndex& /*parent*/) const {
    return 1;
}

QVariant SymbolTreeModel::data(const QModelIndex& index, int role) const {
    return role == Qt::DisplayRole && index.isValid()
               ? ui::ToQString(CString(m_tree.Text(NodeOf(index))))
               : QVariant();
}

Qt::ItemFlags SymbolTreeModel::flags(const QModelIndex& index) const {
    const Qt::ItemFlags flags = QAbstractItemModel::flags(index);
    return index.isValid() && m_tree.IsLeaf(NodeOf(index)) ? flags | Qt::ItemNeverHasChildren
                                                           : flags;
}

}  // namespace ta::dialogs
