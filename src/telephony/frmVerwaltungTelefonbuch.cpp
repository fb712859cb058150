#include "telephony/frmVerwaltungTelefonbuch.h"
#include "common/Guard.h"
#include "store/StoreGlobals.h"
#include "ui_frmVerwaltungTelefonbuch.h"

using common::connectGuarded;
using common::Origin;
using namespace Qt::StringLiterals;

frmVerwaltungTelefonbuch::frmVerwaltungTelefonbuch(QWidget* parent) :
    QDialog(parent), m_ui(std::make_unique<Ui::frmVerwaltungTelefonbuch>()) {
    m_ui->setupUi(this);
    setFixedSize(760, 480);
    DataControl.setConnection(ConnPhone);
    m_ui->grid_PhoneBook->setDataControl(DataControl);
    connectGuarded(Origin::User, m_ui->grid_PhoneBook, &platform::DataGrid::rowActivated, this,
                   [this](int row) { CopyAdressFromPhoneBook(row); });
    connectGuarded(Origin::User, m_ui->cmdClose, &QPushButton::clicked, this, [this] { reject(); });
}

frmVerwaltungTelefonbuch::~frmVerwaltungTelefonbuch() = default;

int frmVerwaltungTelefonbuch::search(const QString& sql) {
    m_selected = false;
    DataControl.setRecordSource(sql);
    DataControl.Refresh();
    m_ui->lbl_KundenTotal->setText(QString::number(DataControl.rowCount()));
    FormatGrid();
    return DataControl.rowCount();
}

void frmVerwaltungTelefonbuch::FormatGrid() {
    const auto number = u"0000000000"_s;
    m_ui->grid_PhoneBook->formatColumns({{tr("Name"), 1500},
                                         {tr("Vorname"), 1200},
                                         {tr("Strasse"), 1500},
                                         {tr("PLZ"), 500, Qt::AlignLeft, {}, u"00000"_s},
                                         {tr("Ort"), 1350},
                                         {tr("Kanton"), 700},
                                         {tr("Telefon"), 1100, Qt::AlignLeft, {}, number},
                                         {tr("Mobile"), 1100, Qt::AlignLeft, {}, number}});
    m_ui->grid_PhoneBook->stretchColumn(2);
    m_ui->grid_PhoneBook->setRow(0);
    m_ui->grid_PhoneBook->setFocus();
}

void frmVerwaltungTelefonbuch::CopyAdressFromPhoneBook(int row) {
    const auto text = [&](int column) { return m_ui->grid_PhoneBook->text(row, column); };
    if (text(0).isEmpty())
        return;
    m_selected = true;
    m_row = {text(0), text(1), text(2), text(3), text(4), text(5), text(6), text(7)};
    accept();
}
