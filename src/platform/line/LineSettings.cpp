#include "platform/line/LineSettings.h"
#include "platform/IniSection.h"
#include <algorithm>

namespace platform {
namespace {

LineSettings::Kind kindOf(const QString& text) {
    const auto name = text.toLower();
    if (name.isEmpty() || name == u"keine")
        return LineSettings::Kind::None;
    if (name == u"sip")
        return LineSettings::Kind::Sip;
    if (name == u"capi")
        return LineSettings::Kind::Capi;
    return name == u"monitor" ? LineSettings::Kind::Monitor : LineSettings::Kind::Unknown;
}

/// "host", "host:port", "[2001:db8::1]:port" or a bare IPv6 address.
void splitHost(const QString& text, QString& host, int& port) {
    host = text;
    const auto colon = text.lastIndexOf(u':');
    const bool bracketed = text.startsWith(u'[');
    const bool hasPort = bracketed ? colon > text.indexOf(u']') : text.count(u':') == 1;
    if (hasPort) {
        host = text.left(colon);
        port = IniSection::portOf(text.mid(colon + 1));
    }
    if (bracketed)
        host = host.mid(1).section(u']', 0, 0);
}

LineSettings::Sip readSip(IniSection& section) {
    LineSettings::Sip sip;
    sip.address = section.text(QStringLiteral("SipAdresse"), sip.address);
    sip.port = section.port(QStringLiteral("SipPort"), sip.port);
    splitHost(section.text(QStringLiteral("SipRegistrar")), sip.registrar, sip.registrarPort);
    if (sip.registrarPort == 0)
        section.misunderstood(QStringLiteral("SipRegistrar"));
    sip.user = section.text(QStringLiteral("SipBenutzer"));
    sip.password = section.text(QStringLiteral("SipPasswort"));
    sip.loginName = section.text(QStringLiteral("SipAnmeldename"), sip.user);
    sip.domain = section.text(QStringLiteral("SipDomain"), sip.registrar);
    sip.onlyKnown = section.yes(QStringLiteral("SipNurBekannte"));
    sip.expiry = std::chrono::seconds(section.number(QStringLiteral("SipAblauf"), 300, 60, 86400));
    return sip;
}

/// Digits alone, however the code was written.
QString readCountryCode(IniSection& section) {
    const QString key = QStringLiteral("Landesvorwahl");
    QString code = section.text(key);
    if (!section.has(key))
        return LineSettings().countryCode;
    for (const QString& prefix : {QStringLiteral("+"), QStringLiteral("00")})
        if (code.startsWith(prefix))
            code = code.mid(prefix.size());
    const bool isCode = std::all_of(code.begin(), code.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
    if (!isCode)
        section.misunderstood(key);
    return isCode ? code : LineSettings().countryCode;
}

} // namespace

LineSettings LineSettings::read(const QString& iniFile) {
    IniSection section(iniFile, QStringLiteral("Telefon"), IniSection::Missing::Problem);
    LineSettings settings;
    settings.kindText = section.text(QStringLiteral("Leitung"));
    settings.kind = kindOf(settings.kindText);
    if (settings.kind == Kind::Unknown)
        section.misunderstood(QStringLiteral("Leitung"));
    settings.retry = std::chrono::seconds(section.number(QStringLiteral("Wiederholung"), 5, 1, 600));
    settings.countryCode = readCountryCode(section);
    settings.keptCalls = section.number(QStringLiteral("AnruferListe"), 0, 0, 10'000'000);
    settings.sip = readSip(section);
    settings.capi.controller = section.number(QStringLiteral("CapiController"), 1, 0, 127);
    settings.monitor.host = section.text(QStringLiteral("MonitorHost"));
    settings.monitor.port = section.port(QStringLiteral("MonitorPort"), settings.monitor.port);
    section.findUnknownKeys();
    settings.problem = section.problem();
    return settings;
}

} // namespace platform
