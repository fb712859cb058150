#include "common/Clock.h"
#include "maintenance/SystemNews.h"
#include "maintenance/mod_SoftwareUpdate.h"
#include "store/SystemSettings.h"
#include "support/AnsweringServer.h"
#include "support/TestDialogs.h"
#include "support/TestFirm.h"
#include "support/TestFirmServices.h"
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using common::kProgramVersion;
using common::Version;
using maintenance::systemNews;
using mod_SoftwareUpdate::Standing;
using test::AnsweringServer;

namespace {

QString tags(const QStringList& values) {
    QString text;
    int tag = 0;
    for (const QString& value : values) {
        const QString number = QString::number(++tag).rightJustified(2, u'0');
        text += u"=/"_s + number + u'=' + value + u'=' + number + u"/="_s;
    }
    return text;
}

QString tags(const Version& v) {
    return tags({QString::number(v.major), QString::number(v.minor), QString::number(v.revision)});
}

const Version kNext{kProgramVersion.major, kProgramVersion.minor, kProgramVersion.revision + 1};
const QString kForce = u"Software Aktualisierung: Es steht eine neue Software Version"_s;
const QString kOffer = u"Software aktualisieren: Eine neue Version steht"_s;
const QString kCurrent = u"Software aktualisieren: Die Software ist auf dem aktuellsten Stand."_s;

const QString kSoftware = u"SoftwareVersion"_s;
const QString kPhoneBook = u"PhoneBookVersion"_s;

class SoftwareUpdate : public testing::Test {
  protected:
    SoftwareUpdate() {
        systemNews() = {};
        internet.ends.systemHost = server.address();
        server.answer = AnsweringServer::page("");
    }

    ~SoftwareUpdate() override {
        systemNews() = {};
        SysAnmeldungBenutzer = 0;
        UserAdministrator = 0;
    }

    void serve(const QString& script, const QString& text) {
        server.answersTo[script] = AnsweringServer::page(text.toUtf8());
    }

    /// What CheckForUpdates says.
    QString check() {
        mod_SoftwareUpdate::CheckForUpdates(services);
        return said();
    }

    QString said() {
        QStringList all;
        for (const auto& box : std::exchange(dialogs.said, {}))
            all << box.title + u": "_s + box.text;
        return all.join(u'|');
    }

    test::TestFirm firm;
    test::TestDialogs dialogs;
    test::TestNavigation navigation;
    test::TestRegistry registry;
    test::TestReports reports;
    test::TestPrinters printers;
    test::TestInternet internet;
    const platform::Services services{dialogs, navigation, registry, reports, printers, internet};
    AnsweringServer server;
};

TEST_F(SoftwareUpdate, VersionsAreReadStrictlyAndComparedByOneNumber) {
    for (const auto& [text, number] : {std::pair{u"1.0.5"_s, 1000.0005}, {u"2.999.9999"_s, 2999.9999}})
        EXPECT_EQ(Version::parse(text)->asNumber(), number);
    for (const QString& bad : {u"1.1000.0"_s, u"1.0.10000"_s, u"1000000.0.0"_s, u"1.0"_s, u"1.0.0.0"_s,
                               u"-1.0.0"_s, u"1e9.0.0"_s, u"1. 0.0"_s, u"1.0.٣"_s, u"9999999999999999.0.0"_s})
        EXPECT_FALSE(Version::parse(bad)) << bad.toStdString();
    EXPECT_TRUE(common::IsVersionCurrent(kProgramVersion) && common::IsVersionCurrent(kNext));
    EXPECT_FALSE(common::IsVersionCurrent({0, 999, 9999}));
}

TEST_F(SoftwareUpdate, TheAnswerAtTheStartIsTakenOrLeftInItsParts) {
    const QString message = u"Zeile 1\r\nZeile 2 =/01=9=01/= =09/= Schluss"_s;
    const auto answer = [&message](int place, const QString& value) {
        QStringList values{u"2"_s, u"3"_s, u"4"_s, u"1"_s, u"0"_s, u"0"_s, u"46349"_s, u"1"_s, message};
        values[place - 1] = value;
        return maintenance::readSystemNews(tags(values));
    };
    const auto news = answer(1, u"2"_s);
    ASSERT_TRUE(news.newest);
    EXPECT_EQ(news.newest->text() + u' ' + news.UpdateFrist.text(), u"2.3.4 1.0.0");
    EXPECT_EQ(news.UpdateFristDatum, 46349);
    EXPECT_EQ(news.SystemMessageText, message);
    for (const int place : {1, 2, 3, 4, 5, 6, 7})
        for (const QString& bad : {u""_s, u"x"_s, u"1e9"_s, u"-1"_s, u"99999999"_s}) {
            const auto without = answer(place, bad);
            EXPECT_FALSE(without.newest) << place << bad.toStdString();
            EXPECT_EQ(without.SystemMessageText, message);
        }
    for (const QString& none : {u"0"_s, u"2"_s, u"ja"_s})
        EXPECT_EQ(answer(8, none).SystemMessageText, u"") << none.toStdString();
    for (const QString& page : {u""_s, u"<html>=/01=</html>"_s, u"=/09=x"_s}) {
        const auto nothing = maintenance::readSystemNews(page);
        EXPECT_FALSE(nothing.newest || nothing.SystemMessageStatus) << page.toStdString();
    }
}

TEST_F(SoftwareUpdate, TheDeadlineDecidesWhetherItIsForced) {
    const qint64 today = qint64(common::clock::today());
    const QString left = u"Software Aktualisierung: Sie haben noch %1 Tage Zeit, um Ihre Software zu "
                         "aktualisieren."_s;
    for (const auto& [frist, days, says] : {std::tuple{kProgramVersion, 30, left.arg(30)},
                                            {kProgramVersion, 0, left.arg(0)},
                                            {kProgramVersion, -1, kForce},
                                            {kNext, 30, kForce}}) {
        systemNews() = {.newest = kNext, .UpdateFrist = frist, .UpdateFristDatum = today + days};
        EXPECT_EQ(mod_SoftwareUpdate::CheckSoftwareUpdate(services, kProgramVersion), Standing::Current);
        EXPECT_EQ(said(), u"");
        EXPECT_EQ(mod_SoftwareUpdate::CheckSoftwareUpdate(services, kNext),
                  says == kForce ? Standing::Forced : Standing::Behind);
        EXPECT_TRUE(said().startsWith(says)) << days;
        EXPECT_EQ(std::exchange(navigation.ended, false), says == kForce);
    }
    systemNews() = {};
    EXPECT_EQ(mod_SoftwareUpdate::CheckSoftwareUpdate(services, kNext), Standing::Behind);
    EXPECT_EQ(said(), u"") << "a deadline that was never told forces nobody";
}

TEST_F(SoftwareUpdate, AForcedUpdateEndsTheProgramOnEveryRoad) {
    systemNews() = {.newest = kNext};
    const QString no = u"|Software Aktualisiierung: Sie möchten die Software nicht aktualisiert."_s;
    const QString yes = u"|Software Aktualisiierung: Sie haben die Software nicht aktualisiert."_s;
    const QString other = u"|Software Aktualisierung: Damit Sie die Software Aktualisierung vornehmen"_s;
    for (const auto& [login, administrator, answer, farewell] : {std::tuple{0, 0, platform::kAnswerNo, no},
                                                                 {0, 0, platform::kAnswerYes, yes},
                                                                 {1, -1, platform::kAnswerYes, yes},
                                                                 {1, 0, platform::kAnswerYes, other},
                                                                 {1, 0, platform::kAnswerNo, other}}) {
        SysAnmeldungBenutzer = login;
        UserAdministrator = qint16(administrator);
        dialogs.answer(answer);
        EXPECT_FALSE(mod_SoftwareUpdate::OfferSoftwareUpdate(services, kNext));
        const QString told = said();
        EXPECT_TRUE(told.startsWith(kForce) && told.contains(farewell)) << told.toStdString();
        EXPECT_EQ(std::exchange(navigation.shown, {}),
                  farewell == yes ? QStringList{mod_SoftwareUpdate::kForcedScreen} : QStringList());
        EXPECT_TRUE(std::exchange(navigation.ended, false));
    }
}

TEST_F(SoftwareUpdate, AskingTheServerLeadsToTheUpdates) {
    serve(kSoftware, tags(kProgramVersion));
    serve(kPhoneBook, tags({u"1"_s}));
    EXPECT_EQ(check(), kCurrent + u"|Telefonbuch aktualisieren: Das Telefonbuch ist auf dem aktuellsten "
                                  "Stand."_s);
    EXPECT_EQ(server.requests.first(),
              u"POST /rootTavolinoNet/System/TavolinoNet_SoftwareVersion.asp HTTP/1.1");
    // The row with the highest key counts.
    ConnPhone.Execute(u"INSERT INTO tbl_PhoneBookVersion (lng_PhoneBookVersion) VALUES (202610)"_s);
    serve(kPhoneBook, tags({u"202611"_s}));
    dialogs.answer(platform::kAnswerYes);
    EXPECT_TRUE(
        check().startsWith(kCurrent + u"|Telefonbuch aktualisieren: Eine neue Telefonbuch Version"_s));
    EXPECT_EQ(std::exchange(navigation.shown, {}), QStringList{mod_SoftwareUpdate::kPhoneBookScreen});
    serve(kSoftware, tags(kNext));
    for (const int answer : {platform::kAnswerNo, platform::kAnswerYes}) {
        dialogs.answer(answer);
        const QString told = check();
        EXPECT_TRUE(told.startsWith(kOffer) && !told.contains(u'|')) << "the phone book waits";
    }
    EXPECT_EQ(navigation.shown, QStringList{mod_SoftwareUpdate::kSoftwareScreen}) << "on Yes only";
    SysAnmeldungBenutzer = 1;
    EXPECT_EQ(check(), u"") << "for who is not entitled";
    EXPECT_EQ(dialogs.unexpected, 0);
    // The deadline that was told at the start is not the one of a version that came out since.
    SysAnmeldungBenutzer = 0;
    systemNews() = {.newest = kProgramVersion};
    EXPECT_TRUE(check().startsWith(kOffer)) << "the server does not tell the deadline";
    serve(u"TavolinoNet_Start"_s, tags({u"9"_s, u"0"_s, u"0"_s, u"9"_s, u"0"_s, u"0"_s, u"2"_s}));
    EXPECT_TRUE(check().startsWith(kForce));
}

TEST_F(SoftwareUpdate, ABadAnswerIsNone) {
    for (const QString& bad : {u""_s, u"<html>1.0.9</html>"_s, u"=/01=9=01/==/02=0=02/="_s,
                               tags({u"neun"_s, u"0"_s, u"0"_s}), tags({u"1e9"_s, u"0"_s, u"0"_s})}) {
        serve(kSoftware, bad);
        EXPECT_EQ(check(), u"") << bad.toStdString();
    }
    EXPECT_FALSE(server.requests.join(u' ').contains(kPhoneBook));
    serve(kSoftware, tags(kProgramVersion));
    for (const QString& bad : {u""_s, u"=/01=1e9=01/="_s, u"=/01=1000000000=01/="_s}) {
        serve(kPhoneBook, bad);
        EXPECT_EQ(check(), kCurrent) << bad.toStdString();
    }
    server.answersTo[kSoftware] = AnsweringServer::page(tags(kNext).toUtf8(), "500 Error");
    EXPECT_EQ(check(), u"Software aktualisieren: Der Server meldet den Fehler 500.");
    internet.ends = {};
    EXPECT_TRUE(check().contains(u"SystemAdresse"_s));
}

} // namespace
