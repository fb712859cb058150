#include "masterdata/frmProdukte.h"
#include "common/Guard.h"
#include "platform/ui/FieldHelpers.h"
#include "platform/ui/ListPrinting.h"
#include "ui_frmProdukte.h"

using namespace Qt::StringLiterals;
using namespace modProdukte;
using common::connectGuarded;
using masterdata::PictureSize;
using platform::ui::chooseText;
using platform::ui::fillNumbers;
using platform::ui::removeQuotes;

frmProdukte::frmProdukte(const platform::Services& services, QWidget* parent) :
    MasterDataForm(services, parent), m_ui(std::make_unique<Ui::frmProdukte>()) {
    m_ui->setupUi(this);
    fillLists();
    setUpForm({m_ui->combo_ProduktGruppe, m_ui->txt_Kurzzeichen, m_ui->txt_Produkt, m_ui->combo_Stückelung,
               m_ui->combo_Einheit, m_ui->combo_Reihenfolge, m_ui->txt_Beschreibung},
              {20025, 8550});
    platform::ui::selectAllOnFocus(*m_ui->txt_Beschreibung);
    // What leaves the offer leaves the web as well; the reverse does not hold.
    connectGuarded(m_ui->check_Status, &QCheckBox::clicked, this, [this](bool inactive) {
        if (inactive)
            m_ui->check_InternetPreise->setChecked(false);
    });
    connectGuarded(m_ui->DruckerCommand, &QAbstractButton::clicked, this, [this] {
        platform::ui::printList(this->services(), u"rep_Produkte.rpt"_s, tr("Produktliste"), [this] {
            FillArtikelStamm(dataControl().Recordset(), m_ui->combo_Sort_Kategorie->currentText());
        });
    });
    setUpSorting();
    setUpPictures();
    FormatGrid();
}

frmProdukte::~frmProdukte() = default;

void frmProdukte::setUpSorting() {
    connectGuarded(m_ui->combo_Sort_Kategorie, &QComboBox::currentIndexChanged, this,
                   [this] { FormatGrid(); });
    connectGuarded(m_ui->combo_Sort_Gruppe, &QComboBox::currentIndexChanged, this, [this] { FormatGrid(); });
    connectGuarded(m_ui->check_Sort_Status, &QCheckBox::toggled, this, [this] { FormatGrid(); });
}

void frmProdukte::setUpPictures() {
    m_ui->imgDisplayBildKlein->setSize(PictureSize::Klein);
    m_ui->imgDisplayBildGross->setSize(PictureSize::Gross);
    connectGuarded(m_ui->cmdHintergrundBildKlein, &QAbstractButton::clicked, this, [this] {
        choosePicture(*m_ui->imgDisplayBildKlein,
                      tr("Das Bild muss max. Höhe: 150 x Breite: 150 Pixel sein."));
    });
    connectGuarded(m_ui->cmdHintergrundBildGross, &QAbstractButton::clicked, this, [this] {
        choosePicture(*m_ui->imgDisplayBildGross,
                      tr("Das Bild muss max. Höhe: 900 x Breite: 900 Pixel sein."));
    });
    connectGuarded(m_ui->cmdBildLöschenKlein, &QAbstractButton::clicked, this,
                   [this] { m_ui->imgDisplayBildKlein->remove(); });
    connectGuarded(m_ui->cmdBildLöschenGross, &QAbstractButton::clicked, this,
                   [this] { m_ui->imgDisplayBildGross->remove(); });
}

void frmProdukte::fillLists() {
    fillNumbers(*m_ui->combo_Sort_Gruppe, 1, masterdata::kPriceGroups);
    m_ui->combo_Stückelung->addItems(masterdata::packagingWords());
    fillNumbers(*m_ui->combo_Einheit, 1, 25);
    fillNumbers(*m_ui->combo_Reihenfolge, 1, 500);
    for (const Eintrag& kategorie : Kategorien()) {
        m_ui->combo_ProduktGruppe->addItem(kategorie.text, kategorie.lng_ID);
        m_ui->combo_Sort_Kategorie->addItem(kategorie.text, kategorie.lng_ID);
    }
    m_ui->combo_ProduktGruppe->setCurrentIndex(-1);
    fillExtras();
}

void frmProdukte::fillExtras() {
    m_ui->list_Extras->clear();
    for (const Eintrag& extra : AktiveExtras()) {
        auto* item = new QListWidgetItem(extra.text, m_ui->list_Extras);
        item->setData(Qt::UserRole, extra.lng_ID);
        item->setToolTip(extra.text);
    }
}

void frmProdukte::FormatGrid() {
    if (m_ui->combo_Sort_Kategorie->currentIndex() < 0 || m_ui->combo_Sort_Gruppe->currentIndex() < 0)
        return;
    showRows(ProdukteListe(),
             {{{}, 0},
              {{}, 0},
              {tr("Kurzzeichen"), 1500},
              {tr("Produkt"), 2500},
              {tr("Stückelung"), 1000, Qt::AlignHCenter},
              {tr("Einheit"), 700, Qt::AlignHCenter},
              {tr("Gruppe"), 700, Qt::AlignHCenter},
              {tr("Preis"), 1000, Qt::AlignRight, u"0.00"_s},
              {tr("MWSt-Code"), 1000, Qt::AlignHCenter},
              {tr("Reihenfolge"), 1000, Qt::AlignHCenter},
              {tr("Internet"), 800, Qt::AlignHCenter, tr("\"Nein\";\"Ja\"")},
              {tr("Status"), 800, Qt::AlignHCenter, tr("\"Aktiv\";\"Inaktiv\"")}},
             u"flag_Status = %1 AND lng_Gruppe = %2 AND lng_ProduktGruppe = %3"_s
                 .arg(int(m_ui->check_Sort_Status->isChecked()))
                 .arg(m_ui->combo_Sort_Gruppe->currentText())
                 .arg(m_ui->combo_Sort_Kategorie->currentData().toLongLong()));
}

void frmProdukte::CleanMask() {
    MasterDataForm::CleanMask();
    m_ui->txt_Kurzzeichen->clear();
    m_ui->txt_Produkt->clear();
    m_ui->txt_Beschreibung->clear();
    m_ui->combo_Stückelung->setCurrentIndex(0);
    m_ui->combo_Einheit->setCurrentIndex(0);
    m_ui->check_InternetPreise->setChecked(true);
    m_ui->check_Status->setChecked(false);
    m_ui->Preise->clear();
    ShowProduktBilder({});
    m_ui->check_InternetBilder->setChecked(false);
    // An extra that was added meanwhile is on offer.
    fillExtras();
    m_ui->txt_Kurzzeichen->setFocus();
}

bool frmProdukte::showRecord(qint64 key) {
    const auto produkt = LoadProdukt(key);
    if (!produkt)
        return false;
    m_ui->combo_ProduktGruppe->setCurrentIndex(
        m_ui->combo_ProduktGruppe->findData(produkt->lng_ProduktGruppe));
    m_ui->txt_Kurzzeichen->setText(produkt->txt_Kurzzeichen);
    m_ui->txt_Produkt->setText(produkt->txt_Produkt);
    m_ui->txt_Beschreibung->setPlainText(produkt->txt_Beschreibung);
    chooseText(*m_ui->combo_Stückelung, produkt->txt_Stückelung);
    chooseText(*m_ui->combo_Einheit, QString::number(produkt->lng_Einheit));
    chooseText(*m_ui->combo_Reihenfolge, QString::number(produkt->lng_Reihenfolge));
    m_ui->check_InternetPreise->setChecked(produkt->flag_InternetPreis);
    m_ui->check_InternetBilder->setChecked(produkt->flag_InternetBilder);
    m_ui->check_Status->setChecked(produkt->flag_Status);
    m_ui->Preise->setPrices(produkt->Preise);
    chooseExtras(produkt->Extras);
    ShowProduktBilder(*produkt);
    return true;
}

void frmProdukte::ShowProduktBilder(const Produkt& produkt) {
    m_ui->imgDisplayBildKlein->showStored(produkt.BildKlein.datei);
    m_ui->imgDisplayBildGross->showStored(produkt.BildGross.datei);
}

bool frmProdukte::checkInput() {
    const QString faulty = tr("Fehlerhafte Eingabe");
    if (m_ui->combo_ProduktGruppe->currentIndex() < 0)
        return refuse(tr("Bitte wählen Sie eine Produkt Gruppe aus."), faulty);
    if (!filled(*m_ui->txt_Kurzzeichen))
        return refuse(tr("Bitte geben Sie ein eindeutiges Kurzzeichen ein."), faulty);
    if (!filled(*m_ui->txt_Produkt))
        return refuse(tr("Bitte geben Sie eine Produkt Bezeichnung ein."), faulty);
    if (!m_ui->Preise->allNumeric())
        return refuse(tr("Bitte geben Sie überall einen gültigen Preis ein."), tr("Ungültige Eingabe"));
    removeQuotes(*m_ui->txt_Kurzzeichen);
    removeQuotes(*m_ui->txt_Produkt);
    removeQuotes(*m_ui->txt_Beschreibung);
    const Produkt produkt = maskContent();
    if (FindKurzzeichen(produkt.txt_Kurzzeichen, key(), produkt.lng_ProduktGruppe) >= 0)
        return refuse(tr("Dieses Kurzzeichen existiert bereits."), tr("Fehlende Eingabe"), platform::kYesNo);
    return true;
}

Produkt frmProdukte::maskContent() const {
    return {.lng_ProduktGruppe = m_ui->combo_ProduktGruppe->currentData().toLongLong(),
            .txt_Kurzzeichen = m_ui->txt_Kurzzeichen->text(),
            .txt_Produkt = m_ui->txt_Produkt->text(),
            .txt_Beschreibung = m_ui->txt_Beschreibung->toPlainText(),
            .txt_Stückelung = m_ui->combo_Stückelung->currentText(),
            .lng_Einheit = m_ui->combo_Einheit->currentText().toLongLong(),
            .lng_Reihenfolge = m_ui->combo_Reihenfolge->currentText().toLongLong(),
            .flag_InternetPreis = m_ui->check_InternetPreise->isChecked(),
            .flag_InternetBilder = m_ui->check_InternetBilder->isChecked(),
            .flag_Status = m_ui->check_Status->isChecked(),
            .BildKlein = m_ui->imgDisplayBildKlein->picture(),
            .BildGross = m_ui->imgDisplayBildGross->picture(),
            .Preise = m_ui->Preise->prices(),
            .Extras = chosenExtras()};
}

void frmProdukte::saveRecord() {
    SaveProdukt(maskContent(), key());
}

bool frmProdukte::mayDelete() {
    if (!CanDeleteProdukt(key()))
        return refuse(tr("Dieses Produkt kann nicht gelöscht werden, da bereits Buchungen bestehen."),
                      tr("Löschen Produkt"), platform::kInformation);
    // The firm's caption of this question, also for a product.
    return confirm(tr("Möchten Sie dieses Produkt wirklich löschen?"), tr("Löschen Gruppe"));
}

void frmProdukte::deleteRecord() {
    DeleteProdukt(key());
}

void frmProdukte::choosePicture(frmProdukteBild& box, const QString& tooBig) {
    const QString path = services().dialogs.OpenFile(tr("Produktbild"), tr("Images (*.gif *.jpg)"));
    if (path.isEmpty())
        return;
    const auto choice = box.choose(path);
    if (choice == frmProdukteBild::Choice::TooBig)
        refuse(tooBig, tr("Ungültiges Bild"));
    else if (choice == frmProdukteBild::Choice::NoPicture)
        refuse(tr("Diese Datei ist kein Bild (nur GIF / JPG)."), tr("Ungültiges Bild"));
}

void frmProdukte::chooseExtras(const QList<qint64>& keys) {
    for (int i = 0; i < m_ui->list_Extras->count(); ++i) {
        QListWidgetItem* item = m_ui->list_Extras->item(i);
        item->setSelected(keys.contains(item->data(Qt::UserRole).toLongLong()));
    }
}

QList<qint64> frmProdukte::chosenExtras() const {
    QList<qint64> keys;
    for (int i = 0; i < m_ui->list_Extras->count(); ++i)
        if (const QListWidgetItem* item = m_ui->list_Extras->item(i); item->isSelected())
            keys << item->data(Qt::UserRole).toLongLong();
    return keys;
}
