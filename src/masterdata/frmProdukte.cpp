#include "masterdata/frmProdukte.h"
#include "common/Guard.h"
#include "platform/form/FieldHelpers.h"
#include "platform/report/PrintTable.h"
#include "store/StoreGlobals.h"
#include "ui_frmProdukte.h"
#include <QStyledItemDelegate>

using namespace Qt::StringLiterals;
using namespace modProdukte;
using common::connectGuarded;
using common::Origin;
using masterdata::PictureSize;
using platform::removeQuotes;

namespace {

/// Shows what is chosen as ticked: which extras the product offers, not where the list stands.
class TickDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

  protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        option->features |= QStyleOptionViewItem::HasCheckIndicator;
        option->checkState = option->state.testFlag(QStyle::State_Selected) ? Qt::Checked : Qt::Unchecked;
        option->state.setFlag(QStyle::State_Selected, false);
    }
};

} // namespace

frmProdukte::frmProdukte(const platform::Services& services, QWidget* parent) :
    frmArtikel(services, ConnMain, parent), m_ui(std::make_unique<Ui::frmProdukte>()) {
    m_ui->setupUi(this);
    setUpArtikel(*m_ui->check_InternetPreise, 500, ProdukteListe(),
                 {{{}, 0}, {{}, 0}, {tr("Kurzzeichen"), 1500}, {tr("Produkt"), 2500}});
    m_ui->list_Extras->setItemDelegate(new TickDelegate(m_ui->list_Extras));
    fillCategories();
    fillExtras();
    setUpForm({m_ui->combo_ProduktGruppe, m_ui->txt_Kurzzeichen, m_ui->txt_Produkt, m_ui->combo_Stückelung,
               m_ui->combo_Einheit, m_ui->combo_Reihenfolge, m_ui->txt_Beschreibung},
              {19050, 8550});
    platform::selectAllOnFocus(*m_ui->txt_Beschreibung);
    connectGuarded(Origin::User, m_ui->DruckerCommand, &QAbstractButton::clicked, this, [this] {
        printRows(platform::installedReport(u"rep_Produkte.rpt"_s, tr("Produktliste")),
                  [this](const platform::Progress& progress) {
                      FillArtikelStamm(dataControl().Recordset(), m_ui->combo_Sort_Kategorie->currentText(),
                                       progress);
                  });
    });
    setUpPictures();
    FormatGrid();
}

frmProdukte::~frmProdukte() = default;

void frmProdukte::setUpPictures() {
    m_ui->imgDisplayBildKlein->setSize(PictureSize::Klein);
    m_ui->imgDisplayBildGross->setSize(PictureSize::Gross);
    connectGuarded(Origin::User, m_ui->cmdHintergrundBildKlein, &QAbstractButton::clicked, this, [this] {
        choosePicture(*m_ui->imgDisplayBildKlein,
                      tr("Das Bild muss max. Höhe: 150 x Breite: 150 Pixel sein."));
    });
    connectGuarded(Origin::User, m_ui->cmdHintergrundBildGross, &QAbstractButton::clicked, this, [this] {
        choosePicture(*m_ui->imgDisplayBildGross,
                      tr("Das Bild muss max. Höhe: 900 x Breite: 900 Pixel sein."));
    });
    connectGuarded(Origin::User, m_ui->cmdBildLöschenKlein, &QAbstractButton::clicked, this,
                   [this] { m_ui->imgDisplayBildKlein->remove(); });
    connectGuarded(Origin::User, m_ui->cmdBildLöschenGross, &QAbstractButton::clicked, this,
                   [this] { m_ui->imgDisplayBildGross->remove(); });
}

void frmProdukte::fillCategories() {
    for (const store::Eintrag& kategorie : Kategorien()) {
        m_ui->combo_ProduktGruppe->addItem(kategorie.text, kategorie.lng_ID);
        m_ui->combo_Sort_Kategorie->addItem(kategorie.text, kategorie.lng_ID);
    }
    m_ui->combo_ProduktGruppe->setCurrentIndex(-1);
    connectGuarded(Origin::User, m_ui->combo_Sort_Kategorie, &QComboBox::currentIndexChanged, this,
                   [this] { FormatGrid(); });
}

void frmProdukte::fillExtras() {
    std::vector<store::Eintrag> extras = AktiveExtras();
    m_ui->list_Extras->clearSelection();
    if (extras == m_extras)
        return;
    m_extras = std::move(extras);
    m_ui->list_Extras->clear();
    for (const store::Eintrag& extra : m_extras) {
        auto* item = new QListWidgetItem(extra.text, m_ui->list_Extras);
        item->setData(Qt::UserRole, extra.lng_ID);
        constexpr int kTickAndMargins = 32;
        const int room = m_ui->list_Extras->gridSize().width() - kTickAndMargins;
        if (m_ui->list_Extras->fontMetrics().horizontalAdvance(extra.text) > room)
            item->setToolTip(platform::toolTipOf(extra.text));
        item->setSizeHint(m_ui->list_Extras->gridSize());
    }
}

QString frmProdukte::listFilter() const {
    if (m_ui->combo_Sort_Kategorie->currentIndex() < 0)
        return {};
    return frmArtikel::listFilter() +
           u" AND lng_ProduktGruppe = %1"_s.arg(m_ui->combo_Sort_Kategorie->currentData().toLongLong());
}

void frmProdukte::CleanMask() {
    MasterDataForm::CleanMask();
    cleanArtikel();
    m_ui->txt_Kurzzeichen->clear();
    m_ui->txt_Produkt->clear();
    m_ui->txt_Beschreibung->clear();
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
    m_ui->check_InternetBilder->setChecked(produkt->flag_InternetBilder);
    showArtikel(produkt->Artikel);
    chooseExtras(produkt->Extras);
    ShowProduktBilder(*produkt);
    return true;
}

void frmProdukte::ShowProduktBilder(const Produkt& produkt) {
    m_ui->imgDisplayBildKlein->showStored(produkt.BildKlein.datei);
    m_ui->imgDisplayBildGross->showStored(produkt.BildGross.datei);
}

store::RowMark frmProdukte::markRecord(qint64 key) const {
    return MarkProdukt(key);
}

bool frmProdukte::checkInput() {
    const QString faulty = tr("Fehlerhafte Eingabe");
    if (m_ui->combo_ProduktGruppe->currentIndex() < 0)
        return refuse(*m_ui->combo_ProduktGruppe, tr("Bitte wählen Sie eine Produkt Gruppe aus."), faulty);
    if (!filled(*m_ui->txt_Kurzzeichen))
        return refuse(*m_ui->txt_Kurzzeichen, tr("Bitte geben Sie ein eindeutiges Kurzzeichen ein."), faulty);
    if (!filled(*m_ui->txt_Produkt))
        return refuse(*m_ui->txt_Produkt, tr("Bitte geben Sie eine Produkt Bezeichnung ein."), faulty);
    if (!pricesGiven())
        return false;
    removeQuotes(*m_ui->txt_Kurzzeichen);
    removeQuotes(*m_ui->txt_Produkt);
    removeQuotes(*m_ui->txt_Beschreibung);
    const Produkt produkt = maskContent();
    if (FindKurzzeichen(produkt.txt_Kurzzeichen, key(), produkt.lng_ProduktGruppe) >= 0)
        return refuse(*m_ui->txt_Kurzzeichen, tr("Dieses Kurzzeichen existiert bereits."),
                      tr("Fehlende Eingabe"), platform::kYesNo);
    return true;
}

Produkt frmProdukte::maskContent() const {
    return {.lng_ProduktGruppe = m_ui->combo_ProduktGruppe->currentData().toLongLong(),
            .txt_Kurzzeichen = m_ui->txt_Kurzzeichen->text(),
            .txt_Produkt = m_ui->txt_Produkt->text(),
            .txt_Beschreibung = m_ui->txt_Beschreibung->toPlainText(),
            .Artikel = artikel(),
            .flag_InternetBilder = m_ui->check_InternetBilder->isChecked(),
            .BildKlein = m_ui->imgDisplayBildKlein->picture(),
            .BildGross = m_ui->imgDisplayBildGross->picture(),
            .Extras = chosenExtras()};
}

void frmProdukte::saveRecord() {
    SaveProdukt(maskContent(), key(), mark());
}

bool frmProdukte::mayDelete() {
    if (!CanDeleteProdukt(key()))
        return refuse(tr("Dieses Produkt kann nicht gelöscht werden, da bereits Buchungen bestehen."),
                      tr("Löschen Produkt"), platform::kInformation);
    // The firm's caption of this question, also for a product.
    return confirm(tr("Möchten Sie dieses Produkt wirklich löschen?"), tr("Löschen Gruppe"));
}

void frmProdukte::deleteRecord() {
    DeleteProdukt(key(), mark());
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
