#include "common/RunTimeError.h"
#include "platform/line/LineFactory.h"
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using platform::LineSettings;
using namespace Qt::StringLiterals;

namespace {

LineSettings settingsFrom(const QByteArray& section, const QByteArray& head = "[Telefon]\n") {
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"tavolino.ini"_s));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(head + section);
    file.close();
    return LineSettings::read(file.fileName());
}

/// What a refused start tells; "" when the line starts.
QString refusal(const LineSettings& settings) {
    try {
        platform::createLine(settings)->Start();
    } catch (const common::RunTimeError& error) {
        return error.sentence();
    }
    return {};
}

} // namespace

TEST(LineSettings, ReadsTheWholeSection) {
    const auto settings = settingsFrom("Leitung=SIP\nWiederholung=9\nSipAdresse=::1\nSipPort=5070\n"
                                       "SipRegistrar=pbx.example:5080\nSipBenutzer=620\n"
                                       "SipPasswort=\"a,b;c=\\\"d\\\\%\"\nSipAblauf=1\nCapiController=2\n"
                                       "MonitorHost=192.168.1.1\nMonitorPort=1013\nLandesvorwahl=+49\n"
                                       "AnruferListe=500\nSipNurBekannte=ja\n");
    EXPECT_EQ(settings.problem, u""_s);
    EXPECT_EQ(settings.kind, LineSettings::Kind::Sip);
    EXPECT_TRUE(settings.sip.onlyKnown);
    EXPECT_EQ(settings.countryCode, u"49"_s);
    EXPECT_EQ(settings.sip.password, u"a,b;c=\"d\\%"_s);
    EXPECT_EQ((QStringList{settings.sip.address, settings.sip.registrar, settings.sip.domain,
                           settings.sip.loginName, settings.monitor.host}),
              (QStringList{u"::1"_s, u"pbx.example"_s, u"pbx.example"_s, u"620"_s, u"192.168.1.1"_s}));
    EXPECT_EQ((QList<qint64>{settings.keptCalls, settings.retry.count(), settings.sip.port,
                             settings.sip.registrarPort, settings.sip.expiry.count(),
                             settings.capi.controller, settings.monitor.port}),
              (QList<qint64>{500, 9000, 5070, 5080, 60, 2, 1013}));
}

TEST(LineSettings, RegistrarMayHoldAPort) {
    const std::tuple<QByteArray, QString, int> cases[] = {{"10.0.0.1", u"10.0.0.1"_s, 5060},
                                                          {"[2001:db8::1]:5061", u"2001:db8::1"_s, 5061},
                                                          {"2001:db8::1", u"2001:db8::1"_s, 5060},
                                                          {"pbx:99999", u"pbx"_s, 0},
                                                          {"", u""_s, 5060}};
    for (const auto& [text, host, port] : cases) {
        const auto sip = settingsFrom("SipRegistrar=" + text + "\n").sip;
        EXPECT_EQ(sip.registrar, host) << text.toStdString();
        EXPECT_EQ(sip.registrarPort, port) << text.toStdString();
    }
}

TEST(LineSettings, ALineThatCannotBeTellsWhy) {
    const std::tuple<QByteArray, QString> cases[] = {
        {"Leitung=ISDN\n", u"Die Telefonleitung \"ISDN\" in tavolino.ini ist unbekannt."_s},
        {"Leitung=monitor\n",
         u"Für den Anrufmonitor ist in tavolino.ini kein Router oder ein ungültiger Port angegeben."_s},
        {"Leitung=sip\nSipAdresse=pbx\n",
         u"Die SIP-Leitung ist in tavolino.ini unvollständig oder falsch eingerichtet."_s},
    };
    for (const auto& [section, sentence] : cases)
        EXPECT_EQ(refusal(settingsFrom(section)), sentence) << section.toStdString();
}

TEST(LineSettings, WhatIsWrongWithTheFileIsTold) {
    EXPECT_FALSE(platform::createLine(settingsFrom("Leitung=keine\nLandesvorwahl=\n")));
    EXPECT_EQ(settingsFrom("Leitung=keine\nLandesvorwahl=\n").countryCode, u""_s);
    EXPECT_EQ(settingsFrom("Leitung=keine\n").countryCode, u"41"_s);

    const std::tuple<QByteArray, QByteArray, QString> cases[] = {
        {"Leitung=keine\n", "[Telefon]\n", u""_s},
        {"", "", u"[Telefon]"_s},
        {"Leitung=sip\n", "[telefon\n", u"beschädigt"_s},
        {QByteArray("\0\xff\x80\n=", 5), "PK\3\4", u"[Telefon]"_s},
        {"Leitng=sip\n", "[Telefon]\n", u"Leitng"_s},
        {"Leitung=sipp\n", "[Telefon]\n", u"Leitung"_s},
        {"Leitung=sip\nSipPort=fünf\n", "[Telefon]\n", u"SipPort"_s},
        {"Leitung=sip\nSipRegistrar=pbx:x\n", "[Telefon]\n", u"SipRegistrar"_s},
        {"Leitung=sip\nLandesvorwahl=CH\n", "[Telefon]\n", u"Landesvorwahl"_s},
        {"Leitung=sip\nSipNurBekannte=vielleicht\n", "[Telefon]\n", u"SipNurBekannte"_s},
    };
    for (const auto& [section, head, problem] : cases) {
        const QString told = settingsFrom(section, head).problem;
        EXPECT_EQ(told.isEmpty(), problem.isEmpty()) << section.toStdString();
        EXPECT_TRUE(told.contains(problem)) << told.toStdString();
    }
    const QTemporaryDir folder;
    EXPECT_EQ(LineSettings::read(folder.filePath(u"none.ini"_s)).problem, u""_s);
    EXPECT_FALSE(LineSettings::read(folder.path()).problem.isEmpty()) << "a folder in the file's place";
}
