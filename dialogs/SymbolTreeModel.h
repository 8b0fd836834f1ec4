#pragma once

#include "dialogs/SymbolTree.h"

#include <QAbstractItemModel>

namespace ta::dialogs {

/// The tree of all symbols for a tree view. It keeps no object and no text for a node: a node's
/// number is its index's internal id, and texts are made when a row is painted.
class SymbolTreeModel : public QAbstractItemModel {
public:
    using QAbstractItemModel::QAbstractItemModel;

    void SetTree(compare::SymbolTree tree);
    const compare::SymbolTree& Tree() const { return m_tree; }
    /// The index of a node; an invalid one for SymbolTree::kNone.
    QModelIndex IndexOf(int node) const;
    /// The node of an index; SymbolTree::kNone for an invalid one.
    static int NodeOf(const QModelIndex& index);

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    /// Leaves say that they never have children: else the view would remember each one it expands.
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    compare::SymbolTree m_tree;
};

}  // namespace ta::dialogs
