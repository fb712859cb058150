#include "shop/frmOnlineShopSettingsLiefergebiete.h"
#include "common/Convert.h"
#include "common/Guard.h"
#include "masterdata/modVerwaltungKuriere.h"
#include "platform/form/FieldHelpers.h"
#include "shop/frmOnlineShopSettings.h"
#include "shop/modOnlineShopSettingsLiefergebiete.h"
#include "store/StoreGlobals.h"
#include "store/SystemSettings.h"
#include "ui_frmOnlineShopSettingsLiefergebiete.h"
#include <limits>

using namespace modOnlineShopSettingsLiefergebiete;
using namespace Qt::StringLiterals;
using common::connectGuarded;
using common::formatNumber;
using common::Origin;

namespace {

constexpr int kOrt = 3;

/// A text that the list lacks is added; "" chooses nothing.
void choose(QComboBox& list, const QString& text) {
    text.isEmpty() ? list.setCurrentIndex(-1) : platform::chooseText(list, text);
}

} // namespace

frmOnlineShopSettingsLiefergebiete::frmOnlineShopSettingsLiefergebiete(const platform::Services& services,
                                                                       QWidget* parent) :
    MasterDataForm(services, ConnMain, parent),
    m_ui(std::make_unique<Ui::frmOnlineShopSettingsLiefergebiete>()) {
    m_ui->setupUi(this);
    m_ui->lbl_Ccy->setText(SysCurrency);
    fillLists();
    setUpSorting();
    frmOnlineShopSettings::setUpInternet(*m_ui->cmdInternet, services);
    setUpForm({m_ui->combo_Land, m_ui->txt_PLZ, m_ui->txt_Ort, m_ui->combo_Mindestbestellmenge,
               m_ui->combo_Lieferzeit, m_ui->combo_Kurier},
              {12000, 8550});
    FormatGrid();
}

frmOnlineShopSettingsLiefergebiete::~frmOnlineShopSettingsLiefergebiete() = default;

QString frmOnlineShopSettingsLiefergebiete::buttonName(const QString& act) const {
    return act == u"cmdDelete" ? u"cmd_Delete"_s : act == u"cmdClean" ? u"combo_Clean"_s : act;
}

void frmOnlineShopSettingsLiefergebiete::fillLists() {
    m_ui->combo_Land->addItems({u"CH"_s, u"DE"_s, u"AT"_s});
    frmOnlineShopSettings::fillSteps(*m_ui->combo_Mindestbestellmenge, 0, 30, 1);
    frmOnlineShopSettings::fillSteps(*m_ui->combo_Mindestbestellmenge, 35, 100, 5);
    frmOnlineShopSettings::fillSteps(*m_ui->combo_Lieferzeit, 0, 120, 5);
    for (const store::Eintrag& kurier : modVerwaltungKuriere::FillKurierCombo())
        m_ui->combo_Kurier->addItem(kurier.text);
    for (QComboBox* list :
         {m_ui->combo_Land, m_ui->combo_Mindestbestellmenge, m_ui->combo_Lieferzeit, m_ui->combo_Kurier})
        list->setCurrentIndex(-1);
    m_ui->LiefergebieteGrid->stretchColumn(kOrt);
}

void frmOnlineShopSettingsLiefergebiete::setUpSorting() {
    const auto sortsBy = [this](QPushButton* button, const QString& order) {
        connectGuarded(Origin::User, button, &QPushButton::clicked, this, [this, order] {
            dataControl().Sort(order);
            m_ui->LiefergebieteGrid->standAt(0);
        });
    };
    sortsBy(m_ui->cmdSortPLZ, u"lng_PLZ"_s);
    sortsBy(m_ui->cmdSortOrt, u"txt_Ort ASC"_s);
    sortsBy(m_ui->cmdSortMindestbestellmenge, u"dbl_Mindestbestellmenge DESC"_s);
    sortsBy(m_ui->cmdSortLieferzeiten, u"lng_Lieferzeiten DESC"_s);
    // What is true is stored as -1, and comes first.
    sortsBy(m_ui->cmdSortIsLiefergebiet, u"bool_Liefergebiet ASC"_s);
}

void frmOnlineShopSettingsLiefergebiete::FormatGrid() {
    const int before = m_ui->LiefergebieteGrid->row();
    showRows(Liefergebiete(), {{{}, 0},
                               {tr("Land"), 700, Qt::AlignHCenter},
                               {tr("PLZ"), 800, Qt::AlignHCenter},
                               {tr("Ort"), 2500},
                               {tr("Mindestbestellmenge"), 1500, Qt::AlignRight, u"#,##0.00"_s},
                               {tr("Lieferzeiten"), 1200, Qt::AlignRight, u"0 Minuten"_s, tr("120 Minuten")},
                               {tr("Kurier"), 1000, Qt::AlignHCenter},
                               {tr("Liefergebiet"), 1000, Qt::AlignHCenter, tr("\"\";\"Ja\"")}});
    const int rows = dataControl().rowCount();
    for (int row = 0; row < rows; ++row)
        if (keyOfRow(row) == key())
            return m_ui->LiefergebieteGrid->setRow(row);
    m_ui->LiefergebieteGrid->standAt(qBound(0, before, qMax(rows - 1, 0)));
}

void frmOnlineShopSettingsLiefergebiete::CleanMask() {
    MasterDataForm::CleanMask();
    m_ui->txt_PLZ->clear();
    m_ui->txt_Ort->clear();
    for (QComboBox* list : {m_ui->combo_Mindestbestellmenge, m_ui->combo_Lieferzeit, m_ui->combo_Kurier})
        list->setCurrentIndex(-1);
    m_ui->check_Liefergebiet->setChecked(false);
    m_ui->txt_PLZ->setFocus();
}

bool frmOnlineShopSettingsLiefergebiete::showRecord(qint64 key) {
    const auto gebiet = LoadLiefergebiet(key);
    if (!gebiet)
        return false;
    choose(*m_ui->combo_Land, gebiet->txt_Land);
    m_ui->txt_PLZ->setText(QString::number(gebiet->lng_PLZ));
    m_ui->txt_Ort->setText(gebiet->txt_Ort);
    choose(*m_ui->combo_Mindestbestellmenge, formatNumber(gebiet->dbl_Mindestbestellmenge, u"00"));
    choose(*m_ui->combo_Lieferzeit, formatNumber(double(gebiet->lng_Lieferzeiten), u"00"));
    choose(*m_ui->combo_Kurier, gebiet->txt_Kurier);
    m_ui->check_Liefergebiet->setChecked(gebiet->bool_Liefergebiet);
    return true;
}

std::optional<qint64> frmOnlineShopSettingsLiefergebiete::plz() const {
    const auto number = common::parseNumber(m_ui->txt_PLZ->text());
    constexpr double kMost = std::numeric_limits<qint32>::max();
    return number && std::abs(*number) <= kMost ? std::optional(common::Value(*number).toLong())
                                                : std::nullopt;
}

store::RowMark frmOnlineShopSettingsLiefergebiete::markRecord(qint64 key) const {
    return MarkLiefergebiet(key);
}

bool frmOnlineShopSettingsLiefergebiete::checkInput() {
    if (m_ui->combo_Land->currentIndex() < 0)
        return refuse(*m_ui->combo_Land, tr("Bitte wählen Sie ein Land aus."), tr("Fehlende Eingabe"));
    if (!plz())
        return refuse(*m_ui->txt_PLZ, tr("Bitte geben Sie eine gültige PLZ ein."), tr("Fehlerhafte Eingabe"));
    platform::removeQuotes(*m_ui->txt_Ort);
    if (!filled(*m_ui->txt_Ort))
        return refuse(*m_ui->txt_Ort, tr("Bitte geben Sie eine gültige Ortschaft ein."),
                      tr("Fehlerhafte Eingabe"));
    return key() > 0 || mayReplace();
}

bool frmOnlineShopSettingsLiefergebiete::mayReplace() {
    const qint64 found = FindLiefergebiet(m_ui->combo_Land->currentText(), *plz(), m_ui->txt_Ort->text());
    if (found < 0)
        return true;
    if (!confirm(tr("Diese Ortschaft existiert bereits. Möchten Sie die Ortschaft ersetzen?"),
                 tr("Fehlende Eingabe")))
        return false;
    setKey(found);
    return true;
}

void frmOnlineShopSettingsLiefergebiete::saveRecord() {
    SaveLiefergebiet({.txt_Land = m_ui->combo_Land->currentText(),
                      .lng_PLZ = *plz(),
                      .txt_Ort = m_ui->txt_Ort->text(),
                      .dbl_Mindestbestellmenge = m_ui->combo_Mindestbestellmenge->currentText().toDouble(),
                      .lng_Lieferzeiten = m_ui->combo_Lieferzeit->currentText().toLongLong(),
                      .txt_Kurier = m_ui->combo_Kurier->currentText(),
                      .bool_Liefergebiet = m_ui->check_Liefergebiet->isChecked()},
                     key(), mark());
}

bool frmOnlineShopSettingsLiefergebiete::mayDelete() {
    return confirm(tr("Wollen Sie diese Ortschaft wirklich löschen?"), tr("Löschung"));
}

void frmOnlineShopSettingsLiefergebiete::deleteRecord() {
    DeleteLiefergebiet(key(), mark());
}
