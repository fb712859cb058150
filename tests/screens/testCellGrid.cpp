#include "platform/form/CellGrid.h"
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using platform::CellColumn;
using platform::CellGrid;
using platform::CellKind;
using platform::CellPlace;
using platform::CellTable;

namespace {

/// A small order: code, quantity, a unit that cannot be edited, a hidden key, a price.
class CellGridTest : public testing::Test {
  protected:
    CellGridTest() {
        table.BeforeEdit = [](int, int column) { return column != 2; };
        table.BeforeEndEdit = [](int, int column, common::Value& editor, bool& cancel) {
            cancel = column == 1 && editor.toDouble() > 100;
        };
        table.Change = [this](int row, int column) { changes.append(u"%1,%2"_s.arg(row).arg(column)); };
        grid.setTable(table);
        grid.resize(500, 200);
        grid.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&grid));
        grid.setFocus();
        grid.goTo({0, 0});
    }

    QLineEdit* editor() { return grid.findChild<QLineEdit*>(u"cellEditor"_s); }

    void keys(const QString& text) {
        for (const QChar c : text)
            QTest::keyClick(QApplication::focusWidget(), c.toLatin1());
    }

    void key(Qt::Key which, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QApplication::focusWidget(), which, modifiers);
        // Editors are deleted when the loop comes round.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    CellTable table{{{u"Code"_s, u"Code"_s, CellColumn::Type::Text, {}, true},
                     {u"Anzahl"_s, u"Mg"_s, CellColumn::Type::Number, {}, true},
                     {u"Einheit"_s, u"Einheit"_s, CellColumn::Type::Text, {}, true},
                     {u"Key"_s, u"Key"_s, CellColumn::Type::Number, {}, false},
                     {u"Preis"_s, u"Preis"_s, CellColumn::Type::Number, u"0.00"_s, true}},
                    4};
    QStringList changes;
    CellGrid grid;
};

} // namespace

TEST_F(CellGridTest, KeysLeadFromCellToCell) {
    grid.goTo({0, 1}, true);
    keys(u"5"_s);
    key(Qt::Key_Return);
    EXPECT_EQ(grid.place(), (CellPlace{0, 4})) << "past hidden and read-only cells";
    keys(u"2.5"_s);
    key(Qt::Key_Return);
    EXPECT_EQ(grid.place(), (CellPlace{1, 0}));
    key(Qt::Key_F2);
    key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(grid.place(), (CellPlace{0, 4}));
    EXPECT_EQ(table.number(0, 4), 2.5);
    grid.goTo({1, 0}, true);
    keys(u"B"_s);
    key(Qt::Key_Down);
    EXPECT_EQ(table.text(1, 0), u"B"_s);
    EXPECT_EQ(grid.place(), (CellPlace{2, 0}));
    EXPECT_EQ(changes, (QStringList{u"0,1"_s, u"0,4"_s, u"1,0"_s}));
    // The owner tells the next cell, and a handler that moves the cursor wins.
    grid.NextCell = [](CellPlace from) -> std::optional<CellPlace> { return CellPlace{from.row, 1}; };
    keys(u"C"_s);
    key(Qt::Key_Tab);
    EXPECT_EQ(grid.place(), (CellPlace{2, 1}));
    table.Change = [this](int, int) { grid.goTo({3, 0}); };
    keys(u"12"_s);
    key(Qt::Key_Return);
    EXPECT_EQ(grid.place(), (CellPlace{3, 0}));
    EXPECT_TRUE(grid.hasFocus());
    int asked = -1;
    table.BeforeDelete = [&](int row) { asked = row; };
    key(Qt::Key_Delete);
    EXPECT_EQ(asked, 3);
    EXPECT_EQ(table.rows(), 4);
}

TEST_F(CellGridTest, EditorOpensWithItsTextSelectedAndEscDropsWhatWasTyped) {
    table.setCell(0, 0, u"alt"_s);
    key(Qt::Key_Return);
    ASSERT_TRUE(editor());
    EXPECT_EQ(editor()->selectedText(), u"alt"_s);
    keys(u"neu"_s);
    key(Qt::Key_Escape);
    EXPECT_EQ(table.text(0, 0), u"alt"_s);
    EXPECT_FALSE(grid.isEditing());
    EXPECT_EQ(grid.place(), (CellPlace{0, 0}));
    EXPECT_TRUE(changes.isEmpty());
}

TEST_F(CellGridTest, WhatIsTypedCountsAlsoWhereItEqualsWhatIsShown) {
    table.setCell(0, 4, 3.333);
    grid.goTo({0, 4}, true);
    keys(u"3.33"_s);
    key(Qt::Key_Return);
    EXPECT_EQ(changes, QStringList{u"0,4"_s});
    EXPECT_EQ(table.number(0, 4), 3.33);
}

TEST_F(CellGridTest, UntouchedEditorTakesNothingOver) {
    grid.openEditorOnEnter({0, 1});
    table.setCell(0, 0, u"A"_s);
    grid.goTo({0, 0}, true);
    key(Qt::Key_Return);
    EXPECT_TRUE(changes.isEmpty());
    EXPECT_EQ(grid.place(), (CellPlace{0, 1}));
    EXPECT_TRUE(grid.isEditing()) << "entering a told column opens its editor";
}

TEST_F(CellGridTest, RefusedEditsRestoreTheOldValueAndStay) {
    table.setCell(0, 1, 7.0);
    for (const auto& typed : {u"500"_s, u"abc"_s}) {
        grid.goTo({0, 1});
        keys(typed);
        key(Qt::Key_Return);
        EXPECT_EQ(table.number(0, 1), 7) << typed.toStdString();
        EXPECT_EQ(grid.place(), (CellPlace{0, 1}));
        EXPECT_FALSE(grid.isEditing());
    }
    EXPECT_TRUE(changes.isEmpty());
    grid.goTo({0, 2});
    keys(u"x"_s);
    EXPECT_FALSE(grid.isEditing()) << "a read-only cell opened an editor";
}

TEST_F(CellGridTest, ContextMenuComesByMouseAndByKey) {
    QSignalSpy asked(&grid, &CellGrid::cellContextMenu);
    grid.openEditorOnEnter({0, 1});
    const QRect cell = grid.visualRect(table.index(1, 1));
    QTest::mouseClick(grid.viewport(), Qt::RightButton, {}, cell.center());
    key(Qt::Key_F10, Qt::ShiftModifier);
    grid.goTo({2, 0}, true);
    keys(u"C"_s);
    key(Qt::Key_Menu);
    ASSERT_EQ(asked.size(), 3);
    EXPECT_EQ(asked[0][0].toInt(), 1);
    EXPECT_EQ(asked[0][1].toInt(), 1);
    EXPECT_EQ(asked[2][0].toInt(), 2);
    EXPECT_FALSE(grid.isEditing());
    EXPECT_EQ(table.text(2, 0), u"C"_s);
}

TEST_F(CellGridTest, WhoeverLooksAtAnotherWindowComesBackToWhatHeWasTyping) {
    QMdiArea area;
    auto* lines = new CellGrid;
    auto* order = area.addSubWindow(lines);
    auto* other = area.addSubWindow(new QLineEdit);
    lines->setTable(table);
    area.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&area));
    area.setActiveSubWindow(order);
    lines->setFocus();
    lines->goTo({0, 0});
    keys(u"9"_s);
    area.setActiveSubWindow(other);
    ASSERT_EQ(QApplication::focusWidget(), other->widget());
    EXPECT_EQ(table.text(0, 0), u""_s);
    area.setActiveSubWindow(order);
    keys(u"8"_s);
    key(Qt::Key_Return);
    EXPECT_EQ(table.text(0, 0), u"98"_s);
}

TEST_F(CellGridTest, LeavingTheGridTakesTheEditOver) {
    QWidget window;
    auto* first = new CellGrid(&window);
    auto* second = new QLineEdit(&window);
    first->setTable(table);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    first->setFocus();
    first->goTo({0, 0});
    QTest::keyClick(first, Qt::Key_Tab);
    EXPECT_TRUE(second->hasFocus()) << "outside an editor Tab leaves the grid";
    first->setFocus();
    keys(u"99"_s);
    second->setFocus();
    QTest::qWait(1);
    EXPECT_EQ(table.text(0, 0), u"99"_s);
}
