#pragma once
#include <QHash>
#include <QString>
#include <QWidget>
#include <functional>

namespace shell {

/// How a screen comes to be. A modal one is a QDialog.
struct ScreenEntry {
    std::function<QWidget*(QWidget* parent)> create;
    bool modal = false;
    /// Of a modal one: it stands in the middle of the room, not above the tool bar, where a waiting call is
    /// told.
    bool inRoom = false;
    /// Fills the whole room of the main window when it opens.
    bool maximised = false;
    /// Stands above the room and everything in it, as a part of the main window, and takes no focus when it
    /// is shown: what is being typed goes on where it is.
    bool floating = false;
    /// Asked before the screen opens; it tells the user itself why not.
    std::function<bool()> mayOpen = {};
};

/// The screens that are built in, by their names. A menu entry without its screen stays disabled.
class ScreenRegistry {
  public:
    void add(const QString& name, const ScreenEntry& entry) { m_entries.insert(name, entry); }

    bool has(const QString& name) const { return m_entries.contains(name); }

    /// Null when there is none.
    const ScreenEntry* find(const QString& name) const {
        const auto it = m_entries.constFind(name);
        return it == m_entries.constEnd() ? nullptr : &*it;
    }

    QStringList names() const { return m_entries.keys(); }

  private:
    QHash<QString, ScreenEntry> m_entries;
};

} // namespace shell
