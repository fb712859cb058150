#include "platform/form/MasterDataForm.h"
#include "common/Guard.h"
#include "platform/form/FieldHelpers.h"
#include "platform/form/GridColors.h"
#include "platform/report/ListPrinting.h"
#include "platform/report/SheetExport.h"
#include <QAbstractButton>
#include <QLineEdit>
#include <QPushButton>
#include <QSplitter>

namespace platform {
namespace {

/// Gives the engine time to show a write to the list's own query.
constexpr int kPauseAfterWrite = 1000;

} // namespace

MasterDataForm::MasterDataForm(const Services& services, store::Connection& connection, QWidget* parent) :
    QWidget(parent), m_services(services), m_rows(this) {
    m_rows.setConnection(connection);
    m_rows.setObjectName(QStringLiteral("DataControl"));
}

void MasterDataForm::setUpForm(const QList<QWidget*>& chain, QSize twips) {
    m_grid = findChild<DataGrid*>();
    m_delete = findChild<QAbstractButton*>(QStringLiteral("cmdDelete"));
    m_firstField = chain.first();
    m_grid->setDataControl(m_rows);
    m_delete->setEnabled(false);
    setUpActs();
    offerSheetExport(*m_grid, m_services.dialogs, windowTitle().section(QStringLiteral(": "), -1));
    enterChain(chain);
    for (QLineEdit* field : findChildren<QLineEdit*>())
        selectAllOnFocus(*field);
    for (QPushButton* button : findChildren<QPushButton*>())
        button->setAutoDefault(true);
    findChild<QSplitter*>()->setStretchFactor(0, 1);
    const QSize size(twipsToPixels(twips.width()), twipsToPixels(twips.height()));
    setFixedSize(size.expandedTo(minimumSizeHint()));
}

void MasterDataForm::setUpActs() {
    using common::connectGuarded;
    using common::Origin;
    connectGuarded(Origin::User, m_grid, &DataGrid::rowChosen, this, [this](int row) { browseTo(row); });
    connectGuarded(Origin::User, m_grid, &DataGrid::rowClicked, this, [this](int) { enterMask(); });
    connectGuarded(Origin::User, m_grid, &DataGrid::rowActivated, this, [this](int row) {
        browseTo(row);
        enterMask();
    });
    const auto onClick = [this](const char16_t* name, auto act) {
        connectGuarded(Origin::User, findChild<QAbstractButton*>(QString::fromUtf16(name)),
                       &QAbstractButton::clicked, this, act);
    };
    onClick(u"cmdClean", [this] {
        CleanMask();
        // The row that the mask has let go of; the arrow keys go on from there.
        m_grid->clearSelection();
    });
    onClick(u"cmdSave", [this] { save(); });
    onClick(u"cmdDelete", [this] { remove(); });
    onClick(u"cmdClose", [this] { close(); });
}

void MasterDataForm::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (event->spontaneous() || m_key != 0 || !m_firstField->isEnabled())
        return;
    // The frame around the screen has given the focus to the list, which then marks its first row.
    m_firstField->setFocus();
    m_grid->setRow(-1);
}

void MasterDataForm::showRows(const QString& query, const std::vector<DataColumn>& columns,
                              const QString& filter) {
    m_rows.setRecordSource(query);
    m_rows.Refresh(filter);
    m_grid->formatColumns(columns);
}

void MasterDataForm::goToRow(qint64 key) {
    for (int row = 0; row < m_grid->rowCount(); ++row)
        if (keyOfRow(row) == key)
            return m_grid->setRow(row);
}

void MasterDataForm::printRows(const QString& reportFile, const QString& title,
                               const std::function<void(const Progress&)>& fillPrintTable) {
    printList(m_services, reportFile, title, [&](const Progress& progress) {
        fillPrintTable(progress);
        m_grid->setRow(0);
    });
}

void MasterDataForm::CleanMask() {
    m_key = kNewRecord;
    m_delete->setEnabled(false);
}

void MasterDataForm::chooseRow(int row) {
    CleanMask();
    loadRecord(keyOfRow(row));
}

void MasterDataForm::loadRecord(qint64 key) {
    if (!showRecord(key))
        return;
    m_key = key;
    m_delete->setEnabled(true);
}

qint64 MasterDataForm::keyOfRow(int row) const {
    return m_grid->value(row, 0).toLong();
}

void MasterDataForm::browseTo(int row) {
    chooseRow(row);
    m_entry = focusWidget();
    if (m_entry == m_grid)
        m_entry = m_firstField;
    m_grid->setFocus();
}

void MasterDataForm::enterMask() {
    if (m_entry)
        m_entry->setFocus();
}

void MasterDataForm::save() {
    if (!checkInput())
        return;
    saveRecord();
    waitMilliseconds(kPauseAfterWrite);
    showSaved();
}

void MasterDataForm::remove() {
    if (!mayDelete())
        return;
    deleteRecord();
    waitMilliseconds(kPauseAfterWrite);
    showDeleted();
}

void MasterDataForm::showFresh() {
    FormatGrid();
    CleanMask();
}

bool MasterDataForm::filled(QLineEdit& field) {
    field.setText(field.text().trimmed());
    return !field.text().isEmpty();
}

bool MasterDataForm::refuse(const QString& text, const QString& caption, int style) {
    m_services.dialogs.MsgBox(text, style, caption);
    return false;
}

bool MasterDataForm::confirm(const QString& text, const QString& caption) {
    return m_services.dialogs.MsgBox(text, kYesNo, caption) == kAnswerYes;
}

} // namespace platform
