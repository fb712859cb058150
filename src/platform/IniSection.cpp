#include "platform/IniSection.h"
#include <QFile>
#include <QFileInfo>
#include <algorithm>

namespace platform {

using namespace Qt::StringLiterals;

IniSection::IniSection(const QString& iniFile, const QString& name, Missing missing) :
    m_name(name), m_prefix(name + u'/'), m_file(iniFile, QSettings::IniFormat) {
    if (QFileInfo::exists(iniFile))
        check(iniFile, missing);
}

void IniSection::check(const QString& iniFile, Missing missing) {
    if (!QFile(iniFile).open(QIODevice::ReadOnly))
        m_problems << u"Die Datei kann nicht gelesen werden."_s;
    else if (m_file.status() != QSettings::NoError)
        m_problems << u"Die Datei ist beschädigt."_s;
    else if (missing == Missing::Problem && !m_file.childGroups().contains(m_name))
        m_problems << u"Der Abschnitt [%1] fehlt oder ist leer."_s.arg(m_name);
}

QString IniSection::text(const QString& key, const QString& fallback) {
    m_known.insert(key);
    // An unquoted comma makes a list of the value.
    const auto value = m_file.value(m_prefix + key).toStringList().join(u',').trimmed();
    return value.isEmpty() ? fallback : value;
}

int IniSection::port(const QString& key, int fallback) {
    const auto value = text(key);
    if (!value.isEmpty() && portOf(value) == 0)
        misunderstood(key);
    return value.isEmpty() ? fallback : portOf(value);
}

int IniSection::number(const QString& key, int fallback, int least, int most) {
    bool isNumber = false;
    const int value = text(key).toInt(&isNumber);
    if (!isNumber && !text(key).isEmpty())
        misunderstood(key);
    return isNumber ? std::clamp(value, least, most) : fallback;
}

bool IniSection::yes(const QString& key, bool fallback) {
    const QString value = text(key).toLower();
    if (value == u"ja" || value == u"nein")
        return value == u"ja";
    if (!value.isEmpty())
        misunderstood(key);
    return fallback;
}

int IniSection::portOf(const QString& text) {
    const int value = text.toInt();
    return value >= 1 && value <= 65535 ? value : 0;
}

void IniSection::misunderstood(const QString& key) {
    m_problems << u"Der Wert von \"%1\" ist nicht zu verstehen."_s.arg(key);
}

void IniSection::findUnknownKeys() {
    m_file.beginGroup(m_name);
    for (const QString& key : m_file.childKeys())
        if (!m_known.contains(key))
            m_problems << u"\"%1\" im Abschnitt [%2] ist unbekannt."_s.arg(key, m_name);
    m_file.endGroup();
}

} // namespace platform
