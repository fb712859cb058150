#pragma once
#include <QString>

namespace shell {

/// The program's log: one line an event, appended; at a megabyte the file becomes the one before (".1") and a
/// new one begins. For its owner's eyes only. A log that cannot be written is no reason to stop.
class LogFile {
  public:
    /// Nothing is written until the first line.
    explicit LogFile(const QString& path) : m_path(path) {}

    /// "2026-11-22 18:05:09 kind: text"; line breaks in the text become blanks.
    void write(const QString& kind, const QString& text);

    const QString& path() const { return m_path; }

    static constexpr qint64 kLimit = 1 << 20;

  private:
    QString m_path;
};

/// Sends the toolkit's own messages to the log as well, until release.
void captureMessages(LogFile& log);
void releaseMessages();

} // namespace shell
