#include "platform/form/DataGrid.h"
#include "platform/net/Internet.h"
#include "support/ProgramFixture.h"
#include "support/Servers.h"
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;
using test::ShopServers;
using test::TestFirm;

namespace {

constexpr char kOrder[] =
    R"({"NAME": "Meier", "VORNAME": "Anna", "STRASSE": "Seestrasse 1", "PLZORT": "8000 Zürich",
    "TELEFON": "079 123 45 67", "EMAIL": "anna@example.ch", "VERSANDART": "Lieferung",
    "VERSANDZEIT": "15. Mai 2026, 18:30", "TOTAL": 46.5, "ZEILEN": [
        {"ISPRODUKT": 1, "PRODUKTID": 1, "ANZAHL": 2, "BEZEICHNUNG": "Pizza Hawaii"},
        {"ISPRODUKT": 0, "PRODUKTID": 1, "ANZAHL": 1, "BEZEICHNUNG": "Käsesauce"},
        {"ISPRODUKT": 1, "PRODUKTID": 3, "ANZAHL": 1, "BEZEICHNUNG": "Wein"}]})";

/// The whole program and a shop with both servers.
class WebShopRoad : public test::PrintingProgramTest, public testing::WithParamInterface<ShopServers::Tls> {
  protected:
    void SetUp() override {
        PrintingProgramTest::SetUp();
        internet.ends = servers.endpoints();
        ASSERT_TRUE(start());
    }

    template <typename Widget> Widget* on(const char16_t* name, const char* control) {
        QWidget* open = window().screens().open(QString::fromUtf16(name));
        return open ? open->findChild<Widget*>(QLatin1String(control)) : nullptr;
    }

    platform::DataGrid* list() {
        return on<platform::DataGrid>(u"frmInternetBestellungen", "BestellungGrid");
    }

    /// The sequence of the transfer screen; what its labels and its log say at the end.
    QString upload() {
        window().screens().show(u"frmOnlineShopTransfer"_s);
        on<QCheckBox>(u"frmOnlineShopTransfer", "check_Agreement")->setChecked(true);
        auto* update = on<QPushButton>(u"frmOnlineShopTransfer", "cmdUpdate");
        QTest::mouseClick(update, Qt::LeftButton);
        EXPECT_TRUE(QTest::qWaitFor([&] { return update->isEnabled(); }, 60'000));
        return on<QLabel>(u"frmOnlineShopTransfer", "lblDateiTyp")->text();
    }

    void poll() {
        window().InternetLinkTimer_Timer();
        const auto* control = find<platform::Inet>("Inet1");
        EXPECT_TRUE(QTest::qWaitFor([&] { return !control->StillExecuting(); }, 40'000));
    }

    void openList() {
        QTest::keyClick(&window(), Qt::Key_F11);
        ASSERT_TRUE(list());
    }

    void takeOver() {
        list()->setFocus();
        list()->selectRow(0);
        QTest::keyClick(list(), Qt::Key_Return);
    }

    std::string booked() {
        return row(u"SELECT lng_TrxNr, lng_KundenID, dbl_TotalMitMWSt FROM "
                   u"tbl_Auftragswesen_Bestellungen_Master"_s);
    }

    ShopServers servers{GetParam()};
};

TEST_P(WebShopRoad, FromTheCatalogueToTheBookedAndDeletedOrder) {
    EXPECT_EQ(upload(), u"Upload beendet."_s);
    EXPECT_TRUE(QFile::exists(servers.file(u"TavolinoShopDB.asp"_s)));
    const qint64 id = servers.web.addOrder(kOrder);
    ASSERT_GT(id, 0) << servers.web.log().toStdString();
    poll();
    EXPECT_EQ(window().internetAttention(), 3);
    openList();
    EXPECT_EQ(window().internetAttention(), 0);
    ASSERT_EQ(list()->rowCount(), 1);

    dialogs.answer(platform::kAnswerYes);
    takeOver();
    EXPECT_TRUE(dialogs.last().text.contains(u"Seestrasse 1"_s)) << dialogs.last().text.toStdString();
    ASSERT_TRUE(screen());
    dialogs.answer(platform::kAnswerNo);
    press(Qt::Key_F12);
    EXPECT_EQ(booked(), "1000 1 46.50");
    EXPECT_EQ(TestFirm::count(u"tbl_Auftragswesen_Bestellungen_Details"_s), 3);

    openList();
    dialogs.answer(platform::kAnswerNo);
    takeOver();
    EXPECT_EQ(dialogs.last().text, u"Diese Internet Bestellung wurde bereits als Auftrag 1000 verbucht. "
                                   u"Möchten Sie sie noch einmal übernehmen?"_s);
    dialogs.answer(platform::kAnswerYes);
    QTest::mouseClick(on<QPushButton>(u"frmInternetBestellungen", "cmdDelete"), Qt::LeftButton);
    EXPECT_EQ(list()->rowCount(), 0);
    poll();
    EXPECT_EQ(TestFirm::count(u"tbl_WebShop_Bestellungen_Master"_s), 0) << "it is gone on the server, too";
    EXPECT_EQ(window().internetAttention(), 0);
    EXPECT_EQ(dialogs.unexpected, 0);
    EXPECT_TRUE(ended.isEmpty());
}

TEST_P(WebShopRoad, TheServerGoesAwayAtEachStageAndNothingIsLostOrDoubled) {
    servers.web.addOrder(kOrder);
    poll();
    servers.web.kill();
    poll();
    EXPECT_EQ(TestFirm::count(u"tbl_WebShop_Bestellungen_Master"_s), 1) << "a failed poll changes nothing";
    openList();
    EXPECT_EQ(dialogs.said.size(), 1) << "why it is not of this moment";
    ASSERT_EQ(list()->rowCount(), 1);
    dialogs.answer(platform::kAnswerYes);
    takeOver();
    EXPECT_EQ(screen()->order().LastFilledRow(), -1);

    ASSERT_TRUE(servers.web.start());
    openList();
    dialogs.answer(platform::kAnswerYes);
    takeOver();
    dialogs.answer(platform::kAnswerNo);
    press(Qt::Key_F12);
    EXPECT_EQ(booked(), "1000 1 46.50");

    openList();
    servers.web.kill();
    dialogs.answer(platform::kAnswerYes);
    QTest::mouseClick(on<QPushButton>(u"frmInternetBestellungen", "cmdDelete"), Qt::LeftButton);
    EXPECT_EQ(list()->rowCount(), 0) << "gone here";
    ASSERT_TRUE(servers.web.start());
    poll();
    EXPECT_EQ(TestFirm::count(u"tbl_WebShop_Bestellungen_Master"_s), 1) << "not there: it comes back";

    servers.ftp.kill();
    EXPECT_NE(upload(), u"Upload beendet."_s) << "nobody to log in at";
    EXPECT_EQ(dialogs.unexpected, 0);
    EXPECT_TRUE(ended.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Lines, WebShopRoad, testing::Values(ShopServers::Tls::No, ShopServers::Tls::Yes),
                         [](const auto& lines) {
                             return lines.param == ShopServers::Tls::Yes ? "Tls" : "Plain";
                         });

} // namespace
