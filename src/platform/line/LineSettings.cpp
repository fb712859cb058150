#include "platform/line/LineSettings.h"
#include <QSettings>
#include <algorithm>

namespace platform {
namespace {

/// The keys of the section; a missing or empty key leaves the default.
class Section {
  public:
    explicit Section(const QString& iniFile) : m_file(iniFile, QSettings::IniFormat) {}

    QString text(const QString& key, const QString& fallback = {}) const {
        // An unquoted comma makes a list of the value.
        const auto value = m_file.value(QStringLiteral("Telefon/") + key).toStringList().join(u',').trimmed();
        return value.isEmpty() ? fallback : value;
    }

    int port(const QString& key, int fallback) const {
        const auto value = text(key);
        return value.isEmpty() ? fallback : portOf(value);
    }

    int number(const QString& key, int fallback, int least, int most) const {
        bool isNumber = false;
        const int value = text(key).toInt(&isNumber);
        return isNumber ? std::clamp(value, least, most) : fallback;
    }

    static int portOf(const QString& text) {
        const int value = text.toInt();
        return value >= 1 && value <= 65535 ? value : 0;
    }

  private:
    QSettings m_file;
};

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
        port = Section::portOf(text.mid(colon + 1));
    }
    if (bracketed)
        host = host.mid(1).section(u']', 0, 0);
}

LineSettings::Sip readSip(const Section& section) {
    LineSettings::Sip sip;
    sip.address = section.text(QStringLiteral("SipAdresse"), sip.address);
    sip.port = section.port(QStringLiteral("SipPort"), sip.port);
    splitHost(section.text(QStringLiteral("SipRegistrar")), sip.registrar, sip.registrarPort);
    sip.user = section.text(QStringLiteral("SipBenutzer"));
    sip.password = section.text(QStringLiteral("SipPasswort"));
    sip.loginName = section.text(QStringLiteral("SipAnmeldename"), sip.user);
    sip.domain = section.text(QStringLiteral("SipDomain"), sip.registrar);
    sip.expiry = std::chrono::seconds(section.number(QStringLiteral("SipAblauf"), 300, 60, 86400));
    return sip;
}

} // namespace

LineSettings LineSettings::read(const QString& iniFile) {
    const Section section(iniFile);
    LineSettings settings;
    settings.kindText = section.text(QStringLiteral("Leitung"));
    settings.kind = kindOf(settings.kindText);
    settings.retry = std::chrono::seconds(section.number(QStringLiteral("Wiederholung"), 5, 1, 600));
    settings.sip = readSip(section);
    settings.capi.controller = section.number(QStringLiteral("CapiController"), 1, 0, 127);
    settings.monitor.host = section.text(QStringLiteral("MonitorHost"));
    settings.monitor.port = section.port(QStringLiteral("MonitorPort"), settings.monitor.port);
    return settings;
}

} // namespace platform
