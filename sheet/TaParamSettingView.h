#pragma once

#include "platform/Export.h"
#include "sheet/StudyRows.h"

#include <QScrollArea>
#include <QString>
#include <QStringList>

#include <vector>

namespace ta::sheet {
class ParamEditRow;
class ShapeEditRow;
}  // namespace ta::sheet

/// Edits the settings of one study: a row for each parameter (name, value, range, default) and for
/// each shape (name, visibility, colour, width, line style). A row that differs from its default is
/// marked and has a button that brings the default back. The view keeps no settings: it shows what
/// it is given and tells what the user edits.
class TADIALOGS_EXPORT CTaParamSettingView : public QScrollArea {
    Q_OBJECT

public:
    using ParamRow = ta::sheet::ParamRow;
    using ShapeRow = ta::sheet::ShapeRow;

    explicit CTaParamSettingView(QWidget* parent = nullptr);

    void ShowStudy(const QString& title, const std::vector<ParamRow>& params,
                   const std::vector<ShapeRow>& shapes);
    /// A text in the place of a study.
    void ShowHint(const QString& text);
    /// Shows under each parameter why it cannot be saved; an empty text for one that can. A text
    /// for each parameter.
    void SetParamFaults(const QStringList& reasons);
    /// Puts the focus into a parameter's field; ignored when there is none.
    void FocusParam(int index);

    QSize sizeHint() const override;

signals:
    /// `text` as typed; it may be anything.
    void paramEdited(int index, const QString& text);
    void shapeEdited(int index, const StudyShape& shape);

private:
    QWidget& NewContents();
    void ChainFocus(const std::vector<QWidget*>& stops);

    std::vector<ta::sheet::ParamEditRow*> m_params;
    std::vector<ta::sheet::ShapeEditRow*> m_shapes;
};
