// The master-data screens as windows of the program.
#include "platform/form/DataGrid.h"
#include "tests/screens/ShellFixture.h"
#include <QAction>

using namespace Qt::StringLiterals;
using test::ShellTest;

TEST_F(ShellTest, EachMasterDataScreenHasOneWindowThatFitsAndCloses) {
    frmMDI& window = start();
    window.showNormal();
    window.resize(1280, 720);
    // A long name must not stretch a screen.
    for (const auto& sql :
         {u"INSERT INTO tbl_Verwaltung_ProdukteKategorien(txt_ProduktGruppe) VALUES('%1')"_s,
          u"INSERT INTO tbl_Verwaltung_ProdukteExtras(txt_Extra) VALUES('%1')"_s})
        ConnMain.Execute(sql.arg(QString(5000, u'x')));
    for (const char* entry :
         {"mnVerwaltungProduktGruppe", "mnVerwaltungProdukte", "mnVerwaltungProdukteExtras",
          "mnVerwaltungKurier", "mnOnlineShopEinstellungenLiefergebiete"}) {
        for (int twice = 0; twice < 2; ++twice)
            window.menuAction(QLatin1String(entry))->trigger();
        auto* room = window.findChild<QMdiArea*>();
        ASSERT_EQ(room->subWindowList().size(), 1) << entry;
        QMdiSubWindow* child = room->subWindowList().first();
        EXPECT_TRUE(room->viewport()->rect().contains(child->geometry()))
            << entry << ' ' << child->width() << 'x' << child->height() << " in " << room->viewport()->width()
            << 'x' << room->viewport()->height();
        EXPECT_EQ(child->widget()->minimumSize(), child->widget()->maximumSize());
        // Work starts in the mask, not in the list.
        EXPECT_TRUE(
            child->widget()->findChild<QWidget*>(u"Maske"_s)->isAncestorOf(QApplication::focusWidget()))
            << entry;
        EXPECT_FALSE(child->widget()->findChild<platform::DataGrid*>()->selectionModel()->hasSelection());
        QTest::mouseClick(child->widget()->findChild<QPushButton*>(u"cmdClose"_s), Qt::LeftButton);
        EXPECT_TRUE(QTest::qWaitFor([&] { return room->subWindowList().isEmpty(); })) << entry;
    }
    EXPECT_TRUE(dialogs.said.isEmpty());
}
