#include "platform/line/LineFactory.h"
#include "support/LineSupport.h"
#include "support/ProgramFixture.h"

using namespace Qt::StringLiterals;
using test::TestFirm;

namespace {

/// With a SIP line.
class OrderRoad : public test::PrintingProgramTest {
  protected:
    void SetUp() override {
        PrintingProgramTest::SetUp();
        platform::LineSettings settings;
        settings.kind = platform::LineSettings::Kind::Sip;
        settings.sip.address = u"127.0.0.1"_s;
        settings.sip.port = freePort();
        port = settings.sip.port;
        line = platform::createLine(settings);
        ASSERT_TRUE(start());
    }

    int port = 0;
};

TEST_F(OrderRoad, FromTheRingingLineToThePrintedSlipByKeyboardAlone) {
    const auto caller = Sipp::caller(u"call_cancel.xml"_s, port,
                                     {u"-key"_s, u"from_uri"_s, u"sip:0791234567@127.0.0.1"_s, u"-key"_s,
                                      u"extra"_s, u"Subject: Pizza"_s});
    ASSERT_TRUE(QTest::qWaitFor([&] { return window().callWaits(); }, 10000));
    EXPECT_TRUE(caller->succeeds()) << caller->errors().toStdString();

    press(Qt::Key_F9);
    key(u"10"_s);
    key(u"2"_s);
    press(Qt::Key_F8);
    press(Qt::Key_Return);
    press(Qt::Key_F6);
    key(u"W"_s);
    press(Qt::Key_Return);
    dialogs.answer(platform::kAnswerYes);
    press(Qt::Key_F12);

    EXPECT_EQ(row(u"SELECT * FROM tbl_Auftragswesen_Bestellungen_Master"_s),
              "1000 1 1 46157 15/05/2026 18:00:00 46157.75 18:30:00 Bar 46157 15/05/2026 44.73 1.77 46.50");
    const std::string lines[] = {
        "1000.01 1000 1 1 -1 2.00 2.00 Stk. 1 CHF 33.00 0.00 2.60 32.16 46157.75",
        "1000.02 1000 1 0 1 1.00 0.00 Stk. 1 CHF 1.50 0.00 2.60 1.46 46157.75",
        "1000.03 1000 3 1 -1 1.00 1.00 Stk. 1 CHF 12.00 0.00 8.10 11.10 46157.75",
    };
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(
            row(u"SELECT * FROM tbl_Auftragswesen_Bestellungen_Details WHERE dbl_TrxNr > %1 ORDER BY dbl_TrxNr"_s
                    .arg(1000 + i * 0.01 + 0.005)),
            lines[i]);
    EXPECT_EQ(TestFirm::count(u"tbl_Auftragswesen_Bestellungen_Details"_s), 3);
    EXPECT_EQ(TestFirm::value(
                  u"SELECT flag_Kunde FROM tbl_Verwaltung_AnruferListe WHERE txt_Telefon = '0791234567'"_s),
              u"-1"_s);

    const QString slip = test::pdfText(printing.waitForPdf(u"Kasse"_s));
    for (const char16_t* text : {u"Seestrasse 1", u"0791234567", u"Klingel defekt", u"Pizza Hawaii",
                                 u"Käsesauce", u"Wein", u"33.00", u"46.50", u"18:30", u"CHE-1", u"Danke"})
        EXPECT_TRUE(slip.contains(QString::fromUtf16(text))) << QString::fromUtf16(text).toStdString() << '\n'
                                                             << slip.toStdString();
    EXPECT_EQ(dialogs.unexpected, 0);
    EXPECT_TRUE(ended.isEmpty());
}

TEST_F(OrderRoad, AFullDiskEndsTheProgramAndLosesNothingBooked) {
    ConnMain.Execute(u"PRAGMA max_page_count = 1"_s);
    for (int order = 0; order < 2000 && ended.isEmpty(); ++order) {
        window().BasicCAPI32_IncomingCall({}, u"0791234567"_s, {});
        press(Qt::Key_F9);
        for (int i = 0; i < 8; ++i)
            screen()->order().PickProdukt(TestFirm::kWein, u"W"_s, 1);
        dialogs.answer(platform::kAnswerNo);
        press(Qt::Key_F12);
    }
    ASSERT_EQ(ended.size(), 1);
    EXPECT_TRUE(std::any_of(dialogs.said.begin(), dialogs.said.end(), [](const auto& said) {
        return said.text.contains(u"Der Datenträger ist voll."_s);
    }));
    program.reset();
    store::OpenDatabases();
    const qint64 orders = TestFirm::count(u"tbl_Auftragswesen_Bestellungen_Master"_s);
    EXPECT_GT(orders, 0);
    EXPECT_EQ(TestFirm::count(u"tbl_Auftragswesen_Bestellungen_Details"_s), orders * 8);
    EXPECT_EQ(TestFirm::value(u"SELECT max(lng_TrxNr) AS N FROM tbl_Auftragswesen_Bestellungen_Master"_s),
              QString::number(999 + orders));
}

} // namespace
