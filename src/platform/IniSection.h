#pragma once
#include <QSet>
#include <QSettings>
#include <QStringList>

namespace platform {

/// One section of `tavolino.ini`, read key by key; a missing or empty key leaves the default. Keeps what is
/// not to be understood, a sentence each. Values are never told: one may be a password in the wrong place.
class IniSection {
  public:
    enum class Missing { Fine, Problem };

    /// A file that is not there is an empty section.
    IniSection(const QString& iniFile, const QString& name, Missing missing);

    bool has(const QString& key) const { return m_file.contains(m_prefix + key); }

    QString text(const QString& key, const QString& fallback = {});
    /// 0 for what is no number from 1 to 65535.
    int port(const QString& key, int fallback);
    int number(const QString& key, int fallback, int least, int most);
    /// "ja" or "nein".
    bool yes(const QString& key, bool fallback = false);

    static int portOf(const QString& text);

    void misunderstood(const QString& key);
    /// Once all keys were asked for: any other one is a mistake.
    void findUnknownKeys();

    /// The sentences, a line each.
    QString problem() const { return m_problems.join(u'\n'); }

  private:
    void check(const QString& iniFile, Missing missing);

    QString m_name, m_prefix;
    QSettings m_file;
    QSet<QString> m_known;
    QStringList m_problems;
};

} // namespace platform
