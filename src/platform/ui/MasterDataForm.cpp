#include "platform/ui/MasterDataForm.h"
#include "common/Guard.h"
#include "platform/ui/FieldHelpers.h"
#include "platform/ui/GridColors.h"
#include "platform/ui/SheetExport.h"
#include "store/StoreGlobals.h"
#include <QAbstractButton>
#include <QLineEdit>

namespace platform::ui {
namespace {

/// Gives the engine time to show a write to the list's own query.
constexpr int kPauseAfterWrite = 1000;

} // namespace

MasterDataForm::MasterDataForm(const Services& services, QWidget* parent) :
    QWidget(parent), m_services(services), m_rows(this) {
    m_rows.setObjectName(QStringLiteral("DataControl"));
}

void MasterDataForm::setUpForm(const Controls& controls, QSize twips) {
    using common::connectGuarded;
    m_controls = controls;
    m_controls.grid->setDataControl(m_rows);
    connectGuarded(controls.grid, &DataGrid::rowChosen, this, [this](int row) { browseTo(row); });
    connectGuarded(controls.grid, &DataGrid::rowClicked, this, [this](int) { enterMask(); });
    connectGuarded(controls.grid, &DataGrid::rowActivated, this, [this](int row) {
        browseTo(row);
        enterMask();
    });
    connectGuarded(controls.cmdClean, &QAbstractButton::clicked, this, [this] { CleanMask(); });
    connectGuarded(controls.cmdSave, &QAbstractButton::clicked, this, [this] { save(); });
    connectGuarded(controls.cmdDelete, &QAbstractButton::clicked, this, [this] { remove(); });
    connectGuarded(controls.cmdClose, &QAbstractButton::clicked, this, [this] { close(); });
    controls.cmdDelete->setEnabled(false);
    offerSheetExport(*controls.grid, m_services.dialogs, windowTitle().section(QStringLiteral(": "), -1));
    enterChain(controls.enterChain);
    for (QLineEdit* field : findChildren<QLineEdit*>())
        selectAllOnFocus(*field);
    const QSize size(twipsToPixels(twips.width()), twipsToPixels(twips.height()));
    setFixedSize(size.expandedTo(minimumSizeHint()));
}

void MasterDataForm::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (!event->spontaneous() && !focusWidget() && !m_controls.enterChain.isEmpty())
        m_controls.enterChain.first()->setFocus();
}

void MasterDataForm::showRows(const QString& query, const std::vector<DataColumn>& columns,
                              const QString& filter) {
    m_rows.setConnection(ConnMain);
    m_rows.setRecordSource(query);
    m_rows.Refresh();
    if (!filter.isEmpty())
        m_rows.Filter(filter);
    m_controls.grid->formatColumns(columns);
}

void MasterDataForm::goToRow(qint64 key) {
    for (int row = 0; row < m_controls.grid->rowCount(); ++row)
        if (keyOfRow(row) == key)
            return m_controls.grid->setRow(row);
}

void MasterDataForm::CleanMask() {
    m_key = kNewRecord;
    m_controls.cmdDelete->setEnabled(false);
}

void MasterDataForm::chooseRow(int row) {
    CleanMask();
    loadRecord(keyOfRow(row));
}

void MasterDataForm::loadRecord(qint64 key) {
    if (!showRecord(key))
        return;
    m_key = key;
    m_controls.cmdDelete->setEnabled(true);
}

qint64 MasterDataForm::keyOfRow(int row) const {
    return m_controls.grid->value(row, 0).toLong();
}

void MasterDataForm::browseTo(int row) {
    chooseRow(row);
    m_entry = focusWidget();
    if (m_entry == m_controls.grid)
        m_entry = m_controls.enterChain.first();
    m_controls.grid->setFocus();
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

} // namespace platform::ui
