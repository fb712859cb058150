// What the user of the main window may reach.
#include "maintenance/mod_SoftwareUpdate.h"
#include "platform/Navigation.h"
#include "shell/MenuTree.h"
#include "shell/Rights.h"
#include "shell/frmMDI.h"
#include "store/SystemSettings.h"
#include "ui_frmMDI.h"

using namespace Qt::StringLiterals;

bool frmMDI::loginIsOn() const {
    return SysAnmeldungBenutzer != 0;
}

void frmMDI::disableAnmeldung() {
    m_menu->allow(u"mnEinstellungenAnmeldung"_s, false);
    m_ui->ToolBarAnmeldung->setEnabled(false);
}

void frmMDI::ApplyUserRights() {
    for (const shell::Right& right : shell::rights())
        for (const char* entry : right.entries)
            m_menu->allow(QLatin1String(entry), isFree() || right.user != 0);
    m_ui->ToolBarInternetTransfer->setEnabled(m_services.navigation.hasScreen(u"frmOnlineShopTransfer"_s));
    showUpdatePanels();
    tellSystemNews();
}

bool frmMDI::isFree() const {
    return mod_SoftwareUpdate::isEntitled();
}

void frmMDI::setUserLoggedIn() {
    m_userLoggedIn = true;
    m_newsUntold = true;
}

bool frmMDI::mayReach(const QString& screen) const {
    for (const shell::Right& right : shell::rights())
        if (right.screens.contains(screen))
            return isFree() || right.user != 0;
    // The menu holds the rights: a screen that no entry leads to is open to all.
    bool inMenu = false;
    for (const shell::MenuEntry& entry : shell::menuEntries()) {
        if (screen != entry.screen)
            continue;
        inMenu = true;
        if (m_menu->allows(entry))
            return true;
    }
    return !inMenu;
}
