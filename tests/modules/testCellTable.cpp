#include "common/RunTimeError.h"
#include "platform/form/CellTable.h"
#include <gtest/gtest.h>

using common::Value;
using platform::CellColumn;
using platform::CellKind;
using platform::CellTable;

namespace {

std::vector<CellColumn> columns() {
    return {{QStringLiteral("Name"), QStringLiteral("Name"), CellColumn::Type::Text, {}, true},
            {QStringLiteral("Preis"), QStringLiteral("Preis"), CellColumn::Type::Number,
             QStringLiteral("0.00"), true}};
}

TEST(CellTable, cellsKeepTheirColumnsType) {
    CellTable table(columns(), 2);
    table.setCell(0, 0, 5);
    table.setCell(0, 1, QStringLiteral("12.345"));
    table.setCell(1, 1, QString());
    EXPECT_EQ(table.cell(0, 0), Value(u"5"));
    EXPECT_EQ(table.cell(0, 1), Value(12.345));
    EXPECT_EQ(table.cell(1, 1), Value(0.0));
    EXPECT_EQ(table.data(table.index(0, 1), Qt::DisplayRole).toString(), u"12.35");
    EXPECT_THROW(table.setCell(0, 1, u"abc"), common::RunTimeError);
    EXPECT_EQ(table.column(u"Preis"), 1);
    EXPECT_EQ(table.column(u"preis"), -1);
}

TEST(CellTable, editRunsItsEventsInOrder) {
    CellTable table(columns(), 1);
    QStringList events;
    table.BeforeEndEdit = [&](int, int, Value& editor, bool& cancel) {
        events << QStringLiteral("before %1 while %2").arg(editor.toText(), table.text(0, 1));
        cancel = editor.toDouble() > 100;
        editor = editor.toDouble() * 2;
    };
    table.Change = [&](int row, int column) {
        events << QStringLiteral("change %1 %2").arg(row).arg(column);
    };
    EXPECT_TRUE(table.endEdit(0, 1, QStringLiteral("7")));
    EXPECT_EQ(table.number(0, 1), 14);
    EXPECT_FALSE(table.endEdit(0, 1, QStringLiteral("101")));
    EXPECT_FALSE(table.endEdit(0, 1, QStringLiteral("x")));
    EXPECT_EQ(table.number(0, 1), 14);
    EXPECT_EQ(events, (QStringList{QStringLiteral("before 7 while 0"), QStringLiteral("change 0 1"),
                                   QStringLiteral("before 101 while 14")}));
}

TEST(CellTable, onlyFieldsThatTheOwnerGrantsCanBeEdited) {
    CellTable table(columns(), 2);
    table.setKind(0, 0, CellKind::Label);
    table.BeforeEdit = [](int row, int) { return row == 0; };
    EXPECT_FALSE(table.mayEdit(0, 0));
    EXPECT_TRUE(table.flags(table.index(0, 1)) & Qt::ItemIsEditable);
    EXPECT_FALSE(table.flags(table.index(1, 1)) & Qt::ItemIsEditable);
}

TEST(CellTable, rowsAreCutRemovedAndAddedEmpty) {
    CellTable table(columns(), 3);
    for (int row = 0; row < 3; ++row)
        table.setCell(row, 0, QString::number(row));
    int asked = -1;
    table.BeforeDelete = [&](int row) { asked = row; };
    table.requestDelete(1);
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(table.rows(), 3);
    table.removeRow(1);
    table.setRows(4);
    EXPECT_EQ(table.text(1, 0), u"2");
    EXPECT_EQ(table.text(2, 0), u"");
    EXPECT_EQ(table.rowCount(), 4);
}

} // namespace
