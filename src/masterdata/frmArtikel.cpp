#include "masterdata/frmArtikel.h"
#include "common/Guard.h"
#include "masterdata/frmGruppenPreise.h"
#include "platform/form/FieldHelpers.h"
#include <QCheckBox>
#include <QComboBox>

using namespace Qt::StringLiterals;
using common::connectGuarded;
using common::Origin;
using platform::chooseText;
using platform::DataColumn;
using platform::fillNumbers;

void frmArtikel::setUpArtikel(QCheckBox& internet, int positions, const QString& listQuery,
                              std::vector<DataColumn> ownColumns) {
    m_internet = &internet;
    m_listQuery = listQuery;
    m_columns = std::move(ownColumns);
    for (const DataColumn& column : {DataColumn{tr("Stückelung"), 1000, Qt::AlignHCenter},
                                     {tr("Einheit"), 700, Qt::AlignHCenter},
                                     {tr("Gruppe"), 700, Qt::AlignHCenter},
                                     {tr("Preis"), 1000, Qt::AlignRight, u"0.00"_s},
                                     {tr("MWSt-Code"), 1000, Qt::AlignHCenter},
                                     {tr("Reihenfolge"), 1000, Qt::AlignHCenter},
                                     {tr("Internet"), 800, Qt::AlignHCenter, tr("\"Nein\";\"Ja\"")},
                                     {tr("Status"), 800, Qt::AlignHCenter, tr("\"Aktiv\";\"Inaktiv\"")}})
        m_columns.push_back(column);
    takeControls();
    fillLists(positions);
    follow(store::Topic::Catalogue);
    connectGuarded(Origin::User, m_sortGruppe, &QComboBox::currentIndexChanged, this,
                   [this] { FormatGrid(); });
    connectGuarded(Origin::User, m_sortStatus, &QCheckBox::toggled, this, [this] { FormatGrid(); });
    // What leaves the offer leaves the web as well; the reverse does not hold.
    connectGuarded(Origin::User, m_status, &QCheckBox::clicked, this, [this](bool inactive) {
        if (inactive)
            m_internet->setChecked(false);
    });
}

void frmArtikel::takeControls() {
    m_stueckelung = findChild<QComboBox*>(u"combo_Stückelung"_s);
    m_einheit = findChild<QComboBox*>(u"combo_Einheit"_s);
    m_reihenfolge = findChild<QComboBox*>(u"combo_Reihenfolge"_s);
    m_status = findChild<QCheckBox*>(u"check_Status"_s);
    m_sortGruppe = findChild<QComboBox*>(u"combo_Sort_Gruppe"_s);
    m_sortStatus = findChild<QCheckBox*>(u"check_Sort_Status"_s);
    m_preise = findChild<frmGruppenPreise*>();
}

void frmArtikel::fillLists(int positions) {
    fillNumbers(*m_sortGruppe, 1, masterdata::kPriceGroups);
    m_stueckelung->addItems(masterdata::packagingWords());
    fillNumbers(*m_einheit, 1, 25);
    fillNumbers(*m_reihenfolge, 1, positions);
}

void frmArtikel::FormatGrid() {
    if (const QString filter = listFilter(); !filter.isEmpty())
        showRows(m_listQuery, m_columns, filter);
}

QString frmArtikel::listFilter() const {
    return u"flag_Status = %1 AND lng_Gruppe = %2"_s.arg(int(m_sortStatus->isChecked()))
        .arg(m_sortGruppe->currentText());
}

void frmArtikel::cleanArtikel() {
    m_stueckelung->setCurrentIndex(0);
    m_einheit->setCurrentIndex(0);
    m_internet->setChecked(true);
    m_status->setChecked(false);
    m_preise->clear();
}

void frmArtikel::showArtikel(const masterdata::Artikel& artikel) {
    chooseText(*m_stueckelung, artikel.txt_Stückelung);
    chooseText(*m_einheit, QString::number(artikel.lng_Einheit));
    chooseText(*m_reihenfolge, QString::number(artikel.lng_Reihenfolge));
    m_internet->setChecked(artikel.flag_Internet);
    m_status->setChecked(artikel.flag_Status);
    m_preise->setPrices(artikel.Preise);
}

masterdata::Artikel frmArtikel::artikel() const {
    return {.txt_Stückelung = m_stueckelung->currentText(),
            .lng_Einheit = m_einheit->currentText().toLongLong(),
            .lng_Reihenfolge = m_reihenfolge->currentText().toLongLong(),
            .flag_Internet = m_internet->isChecked(),
            .flag_Status = m_status->isChecked(),
            .Preise = m_preise->prices()};
}

bool frmArtikel::pricesGiven() {
    QLineEdit* faulty = m_preise->faulty();
    return !faulty ||
           refuse(*faulty, tr("Bitte geben Sie überall einen gültigen Preis ein."), tr("Ungültige Eingabe"));
}
