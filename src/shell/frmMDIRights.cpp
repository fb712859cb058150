// What the user of the main window may reach.
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
    const bool free = !loginIsOn() || UserAdministrator != 0;
    for (const shell::Right& right : shell::rights())
        for (const char* entry : right.entries)
            m_menu->allow(QLatin1String(entry), free || right.user != 0);
    showUpdatePanels(free);
    m_ui->ToolBarInternetTransfer->setEnabled(m_services.navigation.hasScreen(u"frmOnlineShopTransfer"_s));
}

bool frmMDI::mayReach(const QString& screen) const {
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

void frmMDI::showUpdatePanels(bool free) {
    const bool newer = free && m_procedures.CheckSoftwareUpdate && m_procedures.CheckSoftwareUpdate();
    m_ui->lbl_SoftwareUpdate->setVisible(newer);
    if (newer)
        m_procedures.showSoftwareUpdate();
    m_ui->lbl_SystemMessage->setVisible(free && m_procedures.systemMessageWaits &&
                                        m_procedures.systemMessageWaits());
}
