// The controls that dialogs share.

#include "platform/ui/DragListBox.h"
#include "platform/ui/PenSamples.h"
#include "platform/ui/PlainRows.h"
#include "tests/support/DialogFixture.h"

#include <QPainter>
#include <QSignalSpy>
#include <QStyleOptionViewItem>
#include <QTest>

#include <functional>

namespace ta::test {
namespace {

// ---- DragListBox ----

class DragListTest : public DialogFixture {
protected:
    DragListTest() {
        list.resize(120, 100);
        for (int i = 0; i < 20; ++i) {
            new QListWidgetItem(QString::number(i), &list);
        }
        list.show();
    }

    QPoint Centre(int row) { return list.visualItemRect(list.item(row)).center(); }
    void Move(QPoint position) { MoveMouse(*list.viewport(), position); }
    void Drag(QPoint from, QPoint to, const std::function<void()>& atEnd = {}) {
        DragMouse(*list.viewport(), from, to, atEnd);
    }
    int RowOf(int number) { return static_cast<int>(Texts(list).indexOf(QString::number(number))); }

    ui::DragListBox list;
    QSignalSpy ended{&list, &ui::DragListBox::dragEnded};
};

TEST_F(DragListTest, ARowMovesWithItsDataAndOneSignalTellsOfIt) {
    list.item(2)->setData(Qt::UserRole, "own");
    Drag(Centre(2), Centre(2) + QPoint(0, 3));
    EXPECT_EQ(RowOf(2), 2) << "less than the distance that starts a drag";
    Drag(Centre(2), Centre(0), [this] {
        EXPECT_EQ(RowOf(2), 0);
        EXPECT_EQ(ended.count(), 0);
    });
    EXPECT_EQ(ended.count(), 1);
    EXPECT_EQ(list.item(0)->data(Qt::UserRole), "own");
    EXPECT_EQ(list.currentRow(), 0);
    EXPECT_EQ(list.count(), 20);
    // There and back is no change; neither is a click.
    Drag(Centre(0), Centre(3), [this] { Move(Centre(0)); });
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, Centre(1));
    EXPECT_EQ(ended.count(), 1);
}

TEST_F(DragListTest, BeyondTheEdgesARowGoesOnAndTheListScrolls) {
    const auto moves = [this](int y, int ticks) {
        Move({10, y});
        timers.Tick(1, ticks);  // the mouse stays where it is
        return RowOf(0);
    };
    Drag(Centre(0), Centre(1), [&] {
        EXPECT_EQ(moves(Centre(1).y(), 5), 1) << "within the list it stays with the mouse";
        EXPECT_EQ(moves(list.viewport()->height() + 5, 30), 19);
        EXPECT_TRUE(list.viewport()->rect().intersects(list.visualItemRect(list.item(19))));
        EXPECT_EQ(moves(-5, 30), 0);
    });
    EXPECT_EQ(ended.count(), 0) << "it is where it was";
    EXPECT_EQ(timers.Period(1), 0);
}

TEST_F(DragListTest, TheCurrentRowIsTheSelectedOne) {
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, Centre(1));
    for (const int row : {1, 2}) {
        QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ControlModifier, Centre(row));
        EXPECT_EQ(list.currentRow(), row);
        EXPECT_TRUE(list.item(row)->isSelected());
    }
    list.resize(120, 900);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, {10, 890});
    EXPECT_TRUE(list.item(2)->isSelected()) << "below the rows";
}

TEST_F(DragListTest, SwitchedOffItIsAPlainList) {
    Drag(Centre(0), Centre(2), [this] {
        list.SetDragEnabled(false);
        EXPECT_EQ(RowOf(0), 0) << "a drag under way is undone";
    });
    Drag(Centre(1), Centre(3));
    EXPECT_EQ(RowOf(1), 1);
    EXPECT_EQ(ended.count(), 0);
}

// ---- Pens, rows ----

class WidgetTest : public DialogFixture {
protected:
    static QImage Picture(QWidget& widget) { return widget.grab().toImage(); }
};

/// Where a picture differs from its background: the rows and columns with ink.
std::pair<int, int> Ink(const QImage& image) {
    std::set<int> rows;
    std::set<int> columns;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) != image.pixelColor(0, 0)) {
                rows.insert(y);
                columns.insert(x);
            }
        }
    }
    return {static_cast<int>(rows.size()), static_cast<int>(columns.size())};
}

TEST_F(WidgetTest, PenSamplesAreSharpInTheirStyleAndWidth) {
    ui::PenSample sample;
    sample.resize(60, 21);
    for (int width = 1; width <= ui::kMaxPenWidth; ++width) {
        sample.SetPen(0, width);
        EXPECT_EQ(Ink(Picture(sample)), std::pair(width, 60));
    }
    std::set<QByteArray> patterns;
    for (int style = 0; style < 5; ++style) {
        sample.SetPen(style, 1);
        const QImage picture = Picture(sample);
        EXPECT_EQ(Ink(picture).first, 1);
        patterns.insert(
            QByteArray(reinterpret_cast<const char*>(picture.constBits()), picture.sizeInBytes()));
    }
    EXPECT_EQ(patterns.size(), 5U);
    EXPECT_EQ(ui::PenStyleOf(7), Qt::SolidLine);
    EXPECT_EQ(ui::PenStyleOf(-1), Qt::SolidLine);
    // An icon, on a screen of twice the pixels, has lines of twice the width.
    for (const qreal scale : {1.0, 2.0}) {
        const QPixmap pixmap = ui::PenIcon(0, 2).pixmap({30, 11}, scale);
        EXPECT_EQ(Ink(pixmap.toImage()), std::pair(int(2 * scale), int(30 * scale)));
    }
}

TEST_F(WidgetTest, PenSamplesTakeTheColourOfTheTexts) {
    ui::PenSample sample;
    sample.resize(20, 5);
    QPalette dark;
    dark.setColor(QPalette::Active, QPalette::WindowText, Qt::white);
    dark.setColor(QPalette::Disabled, QPalette::WindowText, Qt::gray);
    sample.setPalette(dark);
    sample.SetPen(0, 5);
    Show(sample);
    EXPECT_EQ(Picture(sample).pixelColor(10, 2), QColor(Qt::white));
    sample.setEnabled(false);
    EXPECT_EQ(Picture(sample).pixelColor(10, 2), QColor(Qt::gray));
}

// Whether a list with PlainRows looks as one without, which `change` has changed alike.
bool LooksAsTheToolkits(const std::function<void(QListWidget&)>& change) {
    QImage pictures[2];
    for (const bool plain : {false, true}) {
        QListWidget list;
        if (plain) {
            new ui::PlainRows(list);
        }
        list.addItems({"MACD", "移動平均線 MA(5)", "乖離率", QString(40, u'量'), "A\nB"});
        list.resize(260, 180);
        change(list);
        list.show();
        pictures[plain] = list.grab().toImage();
    }
    return pictures[0] == pictures[1];
}

TEST_F(WidgetTest, PlainRowsLookAsTheToolkitsRows) {
    const std::pair<const char*, std::function<void(QListWidget&)>> kChanges[] = {
        {"nothing", [](QListWidget&) {}},
        {"selected", [](QListWidget& list) { list.setCurrentRow(1); }},
        {"disabled", [](QListWidget& list) { list.setEnabled(false); }},
        {"a colour", [](QListWidget& list) { list.item(0)->setForeground(Qt::red); }},
        {"a font", [](QListWidget& list) { list.item(0)->setFont(QFont("Sans", 18)); }},
        {"a check box", [](QListWidget& list) { list.item(0)->setCheckState(Qt::Checked); }},
        {"to the right", [](QListWidget& list) { list.item(0)->setTextAlignment(Qt::AlignRight); }},
        {"icon", [](QListWidget& list) { list.item(1)->setIcon(ui::PenIcon(0, 2)); }},
        {"dark", [](QListWidget& list) { list.setPalette(QPalette(Qt::white, Qt::black)); }},
    };
    for (const auto& [name, change] : kChanges) {
        EXPECT_TRUE(LooksAsTheToolkits(change)) << name;
    }
}

TEST_F(WidgetTest, PlainRowsAreOfOneHeightInAnyFont) {
    QListWidget list;
    new ui::PlainRows(list);
    list.addItems({"MACD", "移動平均線"});
    int before = 0;
    for (const int points : {9, 15}) {
        list.setFont(QFont("Sans", points));
        const int height = list.visualItemRect(list.item(0)).height();
        EXPECT_EQ(list.visualItemRect(list.item(1)).height(), height);
        EXPECT_GT(height, before);
        before = height;
    }
}

}  // namespace
}  // namespace ta::test
