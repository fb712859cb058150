#include "platform/form/MasterDataForm.h"
#include "common/Guard.h"
#include "platform/Saving.h"
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

void MasterDataForm::setUpForm(QList<QWidget*> chain, QSize twips, QWidget* last) {
    m_grid = findChild<DataGrid*>();
    m_delete = findChild<QAbstractButton*>(buttonName(QStringLiteral("cmdDelete")));
    m_firstField = chain.first();
    chain << (last ? last : findChild<QWidget*>(QStringLiteral("cmdSave")));
    m_grid->setDataControl(m_rows);
    m_grid->setOverMask(browses());
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
    if (browses())
        connectGuarded(Origin::User, m_grid, &DataGrid::rowChosen, this, [this](int row) { browseTo(row); });
    connectGuarded(Origin::User, m_grid, &DataGrid::rowClicked, this, [this](int) {
        if (m_entry)
            m_entry->setFocus();
    });
    connectGuarded(Origin::User, m_grid, &DataGrid::rowActivated, this, [this](int row) {
        browseTo(row);
        (m_entry ? m_entry.data() : m_firstField)->setFocus();
    });
    const auto onClick = [this](const char16_t* name, auto act) {
        connectGuarded(Origin::User, findChild<QAbstractButton*>(buttonName(QString::fromUtf16(name))),
                       &QAbstractButton::clicked, this, act);
    };
    onClick(u"cmdClean", [this] { CleanMask(); });
    onClick(u"cmdSave", [this] { save(); });
    onClick(u"cmdDelete", [this] { remove(); });
    onClick(u"cmdClose", [this] { close(); });
}

void MasterDataForm::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (event->spontaneous() || m_key != 0 || !m_firstField->isEnabled())
        return;
    // The frame around the screen has given the focus to the list.
    m_firstField->setFocus();
}

void MasterDataForm::showRows(const QString& query, const std::vector<DataColumn>& columns,
                              const QString& filter) {
    m_rows.setRecordSource(query);
    m_rows.Refresh(filter);
    m_grid->formatColumns(columns);
}

void MasterDataForm::follow(store::Topic topic) {
    common::connectGuarded(common::Origin::Timer, &store::stationNews(), &store::StationNews::shown, this,
                           [this, topic](store::Topic shown) {
                               if (shown == topic)
                                   m_grid->refreshInPlace([this] { FormatGrid(); });
                           });
}

void MasterDataForm::goToRow(int row) {
    chooseRow(row);
    if (m_key == keyOfRow(row))
        m_grid->setRow(row);
    else
        m_grid->passOver(row);
}

void MasterDataForm::printRows(const ReportJob& list,
                               const std::function<void(const Progress&)>& fillPrintTable) {
    printList(m_services, list, [&](const Progress& progress) {
        fillPrintTable(progress);
        m_grid->standAt(0);
    });
}

void MasterDataForm::CleanMask() {
    setKey(kNewRecord);
    m_delete->setEnabled(false);
    if (browses())
        m_grid->clearSelection();
}

void MasterDataForm::chooseRow(int row) {
    CleanMask();
    loadRecord(keyOfRow(row));
}

void MasterDataForm::loadRecord(qint64 key) {
    store::RowMark mark = markRecord(key);
    if (!showRecord(key))
        return;
    m_key = key;
    m_mark = std::move(mark);
    m_delete->setEnabled(true);
}

void MasterDataForm::setKey(qint64 key) {
    m_key = key;
    m_mark = key > 0 ? markRecord(key) : store::RowMark();
}

qint64 MasterDataForm::keyOfRow(int row) const {
    return m_grid->value(row, 0).toLong();
}

void MasterDataForm::browseTo(int row) {
    m_grid->setFocus();
    goToRow(row);
    m_entry = focusWidget() == m_grid ? nullptr : focusWidget();
    m_grid->setFocus();
}

void MasterDataForm::save() {
    if (!checkInput())
        return;
    const auto becomesNew = [this] {
        setKey(kNewRecord);
        m_delete->setEnabled(false);
    };
    if (!saving(
            m_services.dialogs, [this] { saveRecord(); }, becomesNew))
        return;
    waitMilliseconds(kPauseAfterWrite);
    showSaved();
}

void MasterDataForm::remove() {
    if (!mayDelete())
        return;
    if (!saving(m_services.dialogs, [this] { deleteRecord(); }))
        return showFresh();
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

bool MasterDataForm::refuse(QWidget& faulty, const QString& text, const QString& caption, int style) {
    refuse(text, caption, style);
    faulty.setFocus();
    return false;
}

bool MasterDataForm::confirm(const QString& text, const QString& caption) {
    return m_services.dialogs.MsgBox(text, kYesNo, caption) == kAnswerYes;
}

} // namespace platform
