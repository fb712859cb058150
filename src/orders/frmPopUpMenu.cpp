#include "orders/frmPopUpMenu.h"
#include "common/Guard.h"
#include "masterdata/modVerwaltungKuriere.h"

using namespace Qt::StringLiterals;

namespace {

struct Entry {
    const char* name;
    const char16_t* caption;
    const char16_t* text;
};

// The caption of the card company is an old one, the text that is stored the present one; the firm wants
// both.
constexpr Entry kKonditionen[] = {
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

} // namespace

frmPopUpMenu::frmPopUpMenu(QWidget* parent) :
    QObject(parent), mnKonditionen(parent), mnKurier(parent), mnBestellungLoschen(parent) {
    mnKonditionen.setObjectName(u"mnKonditionen"_s);
    mnKurier.setObjectName(u"mnKurier"_s);
    mnBestellungLoschen.setObjectName(u"mnBestellungLoschen"_s);
    addKonditionen();
    QAction* remove = mnBestellungLoschen.addAction(tr("Löschen"));
    remove->setObjectName(u"mnBestellungLoschenLoschen"_s);
    common::connectGuarded(common::Origin::User, remove, &QAction::triggered, this,
                           [this](bool) { Q_EMIT bestellungLoschenLoschen(); });
}

void frmPopUpMenu::addKonditionen() {
    for (const Entry& entry : kKonditionen) {
        QAction* action = mnKonditionen.addAction(QString::fromUtf16(entry.caption));
        action->setObjectName(QString::fromLatin1(entry.name));
        const QString text = QString::fromUtf16(entry.text);
        common::connectGuarded(common::Origin::User, action, &QAction::triggered, this,
                               [this, text](bool) { Q_EMIT konditionenChosen(text); });
    }
}

void frmPopUpMenu::FillKurierMenuOnce() {
    if (!mnKurier.isEmpty())
        return;
    for (const store::Eintrag& kurier : modVerwaltungKuriere::FillKurierMenu()) {
        // A "&" in a code is a character, no mnemonic.
        QAction* action = mnKurier.addAction(QString(kurier.text).replace(u'&', u"&&"_s));
        action->setObjectName(u"mnKurierName"_s);
        common::connectGuarded(common::Origin::User, action, &QAction::triggered, this,
                               [this, kurier](bool) { Q_EMIT kurierChosen(kurier.lng_ID, kurier.text); });
    }
}
