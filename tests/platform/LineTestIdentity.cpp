#include "platform/line/SipIdentity.h"
#include <gtest/gtest.h>

using namespace platform;
using namespace Qt::StringLiterals;

TEST(SipIdentity, UserPartIsTheNumberAsDelivered) {
    const std::tuple<QByteArray, QString> cases[] = {
        {"sip:0441234567@192.168.1.1", u"0441234567"_s},
        {"SIP:+41441234567@pbx:5060;transport=udp?x=y", u"+41441234567"_s},
        {"sips:%2B41441234567@pbx", u"+41441234567"_s},
        {"sip:+41441234567;phone-context=a.b@pbx;user=phone", u"+41441234567"_s},
        {"sip:044:secret@pbx", u"044"_s},
        {"sip:hans.meier@pbx", u"hans.meier"_s},
        {"sip:**620@fritz.box", u"**620"_s},
        {"sip:M%C3%BCller@pbx", u"Müller"_s},
        {"sip:1%0D%0A%002@pbx", u"12"_s},
        {"tel:+41-44-1234567;phone-context=ch", u"+41-44-1234567"_s},
        {"sip:Anonymous@pbx", u""_s},
        {"sip:unavailable@unknown.invalid", u""_s},
        {"sip:anonymous.invalid", u""_s},
        {"sip:@pbx", u""_s},
        {"sip:", u""_s},
        {"", u""_s},
        {"@", u""_s},
        {"044", u""_s},
        {"mailto:a@b", u""_s},
        {"sip:%@pbx", u"%"_s},
        {"sip:" + QByteArray(5000, '7') + "@pbx", QString(50, u'7')},
    };
    for (const auto& [uri, number] : cases)
        EXPECT_EQ(sipIdentity::userPart(uri), number) << uri.left(60).toStdString();
}

TEST(SipIdentity, AddressesMindQuotesAndBrackets) {
    const std::tuple<QByteArray, QByteArrayList> cases[] = {
        {"<sip:1@a>", {"sip:1@a"}},
        {"sip:1@a;x=y", {"sip:1@a"}},
        {"\"Meier, \\\"Hans\\\" <b>\" <sip:1@a>;p=\",\" , <tel:2>", {"sip:1@a", "tel:2"}},
        {"Hans <sip:1@a;x=1,2>", {"sip:1@a;x=1,2"}},
        {"<sip:1@a", {}},
        {"\"Hans", {"\"Hans"}},
        {"\"Hans\\", {"\"Hans\\"}},
        {",,;,<>", {""}},
        {"", {}},
    };
    for (const auto& [header, uris] : cases)
        EXPECT_EQ(sipIdentity::addresses(header), uris) << header.toStdString();
}

TEST(SipIdentity, AssertedIdentityWinsUnlessSuppressed) {
    const std::tuple<QByteArrayList, QByteArray, QString> cases[] = {
        {{}, "", u"620"_s},
        {{"<sip:1@a>"}, "", u"1"_s},
        {{"<sip:pbx>, <tel:2>"}, "none", u"2"_s},
        {{"<sip:a", "<sip:3@a>"}, "", u"3"_s},
        {{"<sip:"}, "", u"620"_s},
        {{"<sip:1@a>"}, "id", u""_s},
        {{"<sip:1@a>"}, " Header ; critical", u""_s},
        {{}, "user", u""_s},
        {{"<sip:1@a>"}, "session;critical", u"1"_s},
    };
    for (const auto& [asserted, privacy, caller] : cases)
        EXPECT_EQ(sipIdentity::caller(asserted, "sip:620@pbx", privacy), caller) << privacy.toStdString();
}

TEST(SipIdentity, StrangersAreOutsideThePrivateNetworks) {
    for (const char* near :
         {"127.0.0.1", "::1", "10.0.0.5", "172.31.1.1", "192.168.1.1", "169.254.1.1", "fd00::1", "fe80::1"})
        EXPECT_TRUE(sipIdentity::isLocal(QHostAddress(QLatin1String(near)))) << near;
    for (const char* far : {"172.32.1.1", "203.0.113.5", "2001:db8::1", "11.0.0.1", ""})
        EXPECT_FALSE(sipIdentity::isLocal(QHostAddress(QLatin1String(far)))) << far;
}
