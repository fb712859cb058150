// What the user of the main window may reach.
#include "shell/MenuTree.h"
#include "shell/frmMDI.h"
#include "store/SystemSettings.h"
#include "ui_frmMDI.h"

using namespace Qt::StringLiterals;

namespace {

struct Right {
    const qint16& flag;
    std::initializer_list<const char*> entries;
};

const Right kRights[] = {
    {UserEinstellungen, {"mnEinstellungenSystem"}},
    {UserKundenStatistik, {"mnAuswertungenKundenumsatz", "mnAuswertungenKundenBuchungsjournal"}},
    {UserUmsatzStatistik, {"mnAuswertungenUmsatz", "mnAuswertungenUmsatzProdukt"}},
    {UserBuchungsjournal, {"mnAuswertungenBuchungsjournal"}},
    {UserOnlineShop, {"mnOnlineShop"}},
    {UserDatensicherung, {"mnDatenBackup"}},
};

} // namespace

bool frmMDI::loginIsOn() const {
    return SysAnmeldungBenutzer != 0;
}

void frmMDI::disableAnmeldung() {
    m_menu->allow(u"mnEinstellungenAnmeldung"_s, false);
    m_ui->ToolBarAnmeldung->setEnabled(false);
}

void frmMDI::ApplyUserRights() {
    const bool free = !loginIsOn() || UserAdministrator != 0;
    for (const char* entry :
         {"mnEinstellungenBenutzer", "mnDatenRestore", "mnSystemUpdates", "mnSystemMessages"})
        m_menu->allow(QLatin1String(entry), free);
    showUpdatePanels(free);
    for (const Right& right : kRights)
        for (const char* entry : right.entries)
            m_menu->allow(QLatin1String(entry), free || right.flag != 0);
    m_ui->ToolBarInternetTransfer->setEnabled((free || UserOnlineShop != 0) &&
                                              m_screens->has(u"frmOnlineShopTransfer"_s));
}

bool frmMDI::mayReach(const QString& screen) const {
    // The menu holds the rights: a screen that no entry leads to is open to all.
    bool inMenu = false;
    for (const shell::MenuEntry& entry : shell::menuEntries()) {
        if (screen != QLatin1String(entry.screen))
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
