#include "menus/frmPopUpMenu.h"
#include "common/Guard.h"
#include "masterdata/modVerwaltungKuriere.h"

using namespace Qt::StringLiterals;

struct frmPopUpMenu::Entry {
    const char* name;
    const char16_t* caption;
    const char16_t* text;
};

// The caption of the card company is an old one, the text that is stored the present one; the firm wants
// both.
const frmPopUpMenu::Entry frmPopUpMenu::kKonditionen[] = {
    {"mnKonditionenCash", u"Cash", u"Cash"},
    {"mnKonditionenEC", u"EC", u"EC"},
    {"mnKonditionenPostcard", u"Postcard", u"Postcard"},
    {"mnKonditionenVisa", u"Visa", u"Visa"},
    {"mnKonditionenMastercard", u"Eurocard", u"Euro/Mastercard"},
    {"mnKonditionenDiners", u"Diners", u"Diners"},
    {"mnKonditionenAmex", u"American Express", u"American Express"},
    {"mnKonditionenQuittung", u"Quittung", u"Quittung"},
    {"mnKonditionenRechnung", u"Rechnung", u"Rechnung"},
    {"mnKonditionenAbgeholt", u"abgeholt", u"abgeholt"},
    {"mnKonditionenGeliefert", u"geliefert", u"geliefert"},
};

const frmPopUpMenu::Entry frmPopUpMenu::kJournalOrders[] = {
    {"mnBuchungJournalDatum", u"Datum", u"lng_BestellDatum ASC"},
    {"mnBuchungJournalAuftragsNr", u"Auftrags-Nr", u"lng_TrxNr ASC"},
    {"mnBuchungJournalBuchung", u"Buchung", u"txt_Buchungstext ASC"},
    {"mnBuchungJournalKurier", u"Kurier", u"txt_Kurier ASC"},
    {"mnBuchungJournalBetrag", u"Betrag", u"dbl_TotalMitMWSt ASC"},
};

frmPopUpMenu::frmPopUpMenu(QWidget* parent) :
    QObject(parent), mnKonditionen(parent), mnKurier(parent), mnBestellungLoschen(parent),
    mnBuchungJournal(parent) {
    mnKonditionen.setObjectName(u"mnKonditionen"_s);
    mnKurier.setObjectName(u"mnKurier"_s);
    mnBestellungLoschen.setObjectName(u"mnBestellungLoschen"_s);
    mnBuchungJournal.setObjectName(u"mnBuchungJournal"_s);
    addKonditionen();
    addBuchungJournal();
    QAction* remove = mnBestellungLoschen.addAction(tr("Löschen"));
    remove->setObjectName(u"mnBestellungLoschenLoschen"_s);
    common::connectGuarded(common::Origin::User, remove, &QAction::triggered, this,
                           [this](bool) { Q_EMIT bestellungLoschenLoschen(); });
}

void frmPopUpMenu::addKonditionen() {
    for (const Entry& entry : kKonditionen)
        addEntry(mnKonditionen, entry, &frmPopUpMenu::konditionenChosen);
}

void frmPopUpMenu::addBuchungJournal() {
    for (const Entry& entry : kJournalOrders)
        addEntry(mnBuchungJournal, entry, &frmPopUpMenu::buchungJournalSorted);
}

void frmPopUpMenu::addEntry(QMenu& menu, const Entry& entry, void (frmPopUpMenu::*chosen)(const QString&)) {
    QAction* action = menu.addAction(QString::fromUtf16(entry.caption));
    action->setObjectName(QString::fromLatin1(entry.name));
    common::connectGuarded(common::Origin::User, action, &QAction::triggered, this,
                           [this, chosen, text = QString::fromUtf16(entry.text)](bool) {
                               Q_EMIT(this->*chosen)(text);
                           });
}

void frmPopUpMenu::ForgetKuriere() {
    if (!mnKurier.isVisible())
        mnKurier.clear();
}

void frmPopUpMenu::FillKurierMenuOnce() {
    if (!mnKurier.isEmpty() && !mnKurier.actions().constFirst()->text().isEmpty())
        return;
    mnKurier.clear();
    for (const store::Eintrag& kurier : modVerwaltungKuriere::FillKurierMenu()) {
        // A "&" in a code is a character, no mnemonic.
        QAction* action = mnKurier.addAction(QString(kurier.text).replace(u'&', u"&&"_s));
        action->setObjectName(u"mnKurierName"_s);
        common::connectGuarded(common::Origin::User, action, &QAction::triggered, this,
                               [this, kurier](bool) { Q_EMIT kurierChosen(kurier.lng_ID, kurier.text); });
    }
    // Without couriers the menu opens nevertheless, with an empty entry.
    if (mnKurier.isEmpty())
        mnKurier.addAction(QString())->setEnabled(false);
}
