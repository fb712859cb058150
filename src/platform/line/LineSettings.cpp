#include "platform/line/LineSettings.h"
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QSettings>
#include <algorithm>

namespace platform {
namespace {

/// The keys of the section; a missing or empty key leaves the default.
class Section {
  public:
    explicit Section(const QString& iniFile) : m_file(iniFile, QSettings::IniFormat) {
        if (QFileInfo::exists(iniFile))
            check(iniFile);
    }

    bool has(const QString& key) const { return m_file.contains(kSection + key); }

    QString text(const QString& key, const QString& fallback = {}) {
        m_known.insert(key);
        // An unquoted comma makes a list of the value.
        const auto value = m_file.value(kSection + key).toStringList().join(u',').trimmed();
        return value.isEmpty() ? fallback : value;
    }

    int port(const QString& key, int fallback) {
        const auto value = text(key);
        if (!value.isEmpty() && portOf(value) == 0)
            misunderstood(key);
        return value.isEmpty() ? fallback : portOf(value);
    }

    int number(const QString& key, int fallback, int least, int most) {
        bool isNumber = false;
        const int value = text(key).toInt(&isNumber);
        if (!isNumber && !text(key).isEmpty())
            misunderstood(key);
        return isNumber ? std::clamp(value, least, most) : fallback;
    }

    bool yes(const QString& key) {
        const QString value = text(key).toLower();
        if (!value.isEmpty() && value != u"ja" && value != u"nein")
            misunderstood(key);
        return value == u"ja";
    }

    static int portOf(const QString& text) {
        const int value = text.toInt();
        return value >= 1 && value <= 65535 ? value : 0;
    }

    /// Values are not told: one may be a password in the wrong place.
    void misunderstood(const QString& key) {
        m_problems << QStringLiteral("Der Wert von \"%1\" ist nicht zu verstehen.").arg(key);
    }

    /// Once all keys were asked for: any other one is a mistake.
    void findUnknownKeys() {
        m_file.beginGroup(QStringLiteral("Telefon"));
        for (const QString& key : m_file.childKeys())
            if (!m_known.contains(key))
                m_problems << QStringLiteral("\"%1\" im Abschnitt [Telefon] ist unbekannt.").arg(key);
        m_file.endGroup();
    }

    const QStringList& problems() const { return m_problems; }

  private:
    void check(const QString& iniFile) {
        if (!QFile(iniFile).open(QIODevice::ReadOnly))
            m_problems << QStringLiteral("Die Datei kann nicht gelesen werden.");
        else if (m_file.status() != QSettings::NoError)
            m_problems << QStringLiteral("Die Datei ist beschädigt.");
        else if (!m_file.childGroups().contains(QStringLiteral("Telefon")))
            m_problems << QStringLiteral("Der Abschnitt [Telefon] fehlt oder ist leer.");
    }

    inline static const QString kSection = QStringLiteral("Telefon/");
    QSettings m_file;
    QSet<QString> m_known;
    QStringList m_problems;
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

LineSettings::Sip readSip(Section& section) {
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
QString readCountryCode(Section& section) {
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
    Section section(iniFile);
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
    settings.problem = section.problems().join(u'\n');
    return settings;
}

} // namespace platform
