#pragma once
#include <QAction>
#include <QHash>
#include <QMenuBar>
#include <QObject>
#include <functional>
#include <vector>

namespace shell {

/// What an entry of the menu leads to.
enum class MenuKind { Menu, Separator, Screen, Anmeldung, Beenden, AnruferListe, SoftwareUpdate };

struct MenuEntry {
    const char* name;
    const char* caption;
    const char* shortcut;
    /// Name of the menu that it stands in; empty for the menu bar.
    const char* parent;
    MenuKind kind;
    /// Name of the screen that it opens.
    QString screen;
};

/// The whole menu, top to bottom.
const std::vector<MenuEntry>& menuEntries();

/// The menu of the main window. An entry is enabled when it leads somewhere and the user may go there.
class MenuTree : public QObject {
    Q_OBJECT
  public:
    /// `leadsSomewhere` judges once; `choose` runs guarded when an entry is chosen.
    MenuTree(QMenuBar& bar, const std::function<bool(const MenuEntry&)>& leadsSomewhere,
             const std::function<void(const MenuEntry&)>& choose, QObject* parent);

    /// The user's rights; without a word every entry is allowed.
    void allow(const QString& name, bool allowed);

    /// Whether the entry and every menu above it are allowed.
    bool allows(const MenuEntry& entry) const;

    /// Null for a name that is not in the menu.
    QAction* action(const QString& name) const { return m_items.value(name).action; }

  private:
    struct Item {
        QAction* action = nullptr;
        bool leadsSomewhere = true;
        QString parent{};
        bool allowed = true;
    };

    QAction* addEntry(QMenu& menu, const MenuEntry& entry,
                      const std::function<void(const MenuEntry&)>& choose);

    QHash<QString, Item> m_items;
};

} // namespace shell
