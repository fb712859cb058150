#include "reporting/frmAuswertung.h"
#include "common/Convert.h"
#include "common/Guard.h"
#include "masterdata/modVerwaltungKuriere.h"
#include "platform/Dialogs.h"
#include "platform/form/DateFields.h"
#include "platform/form/FieldHelpers.h"
#include "platform/report/ListPrinting.h"
#include "platform/report/PrintTable.h"
#include "store/StoreGlobals.h"
#include <QAbstractButton>
#include <QComboBox>
#include <QEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QRegularExpression>
#include <QSignalBlocker>
#include <QTabBar>
#include <QTabWidget>

using namespace Qt::StringLiterals;
using common::connectGuarded;
using common::Origin;

frmAuswertung::frmAuswertung(const platform::Services& services, QWidget* parent) :
    QWidget(parent), m_services(services) {
}

void frmAuswertung::setUpControls() {
    m_drawn = size();
    if (auto* views = findChild<QTabWidget*>(u"Ansicht"_s))
        for (QWidget* part : {static_cast<QWidget*>(views), static_cast<QWidget*>(views->tabBar())})
            part->setAccessibleName(tr("Ansicht"));
    onClick(u"cmdShow", [this] { showFigures(); });
    onClick(u"cmdPrint", [this] { printFigures(); });
    onClick(u"cmdExport", [this] { exportFigures(); });
    onClick(u"cmdClose", [this] { close(); });
}

void frmAuswertung::exportFigures() {
    static const QRegularExpression group(u"^Auswertungen\\W+"_s);
    platform::exportSheets(m_services.dialogs, windowTitle().remove(group).replace(u'/', u'-'), sheets());
}

void frmAuswertung::onClick(const char16_t* name, const std::function<void()>& act) {
    auto* button = findChild<QAbstractButton*>(QString::fromUtf16(name));
    connectGuarded(Origin::User, button, &QAbstractButton::clicked, this, [button, act] {
        // A mnemonic leaves the focus where it is.
        button->setFocus();
        act();
    });
}

platform::DateSpan& frmAuswertung::zeitraum() const {
    return *findChild<platform::DateSpan*>();
}

void frmAuswertung::onChange(const QList<QWidget*>& choices, const std::function<void()>& act) {
    m_choices << choices;
    for (QWidget* choice : choices) {
        if (auto* list = qobject_cast<QComboBox*>(choice))
            connectGuarded(Origin::User, list, &QComboBox::activated, this, act);
        else
            connectGuarded(Origin::User, qobject_cast<QAbstractButton*>(choice), &QAbstractButton::clicked,
                           this, act);
    }
    rememberChoices();
}

void frmAuswertung::rememberChoices() {
    m_chosen.clear();
    for (const QWidget* choice : std::as_const(m_choices))
        m_chosen << choice->property(qobject_cast<const QComboBox*>(choice) ? "currentIndex" : "checked");
}

void frmAuswertung::restoreChoices() {
    for (qsizetype i = 0; i < m_choices.size(); ++i) {
        const QSignalBlocker quiet(m_choices[i]);
        m_choices[i]->setProperty(qobject_cast<QComboBox*>(m_choices[i]) ? "currentIndex" : "checked",
                                  m_chosen[i]);
    }
}

bool frmAuswertung::reading(const std::function<void(const platform::Progress&)>& read) {
    try {
        read(m_services.dialogs.ShowProgress(tr("Die Auswertung wird berechnet …")));
        rememberChoices();
        return true;
    } catch (const platform::GivenUp&) {
        restoreChoices();
        return false;
    }
}

void frmAuswertung::fillKurierCombo(QComboBox& list, bool alle) {
    if (alle)
        list.addItem(tr("Alle"));
    for (const store::Eintrag& kurier : modVerwaltungKuriere::FillKurierCombo())
        list.addItem(kurier.text, kurier.lng_ID);
    list.setCurrentIndex(alle ? 0 : -1);
}

std::optional<qint64> frmAuswertung::kurierOf(const QComboBox& list) {
    const QVariant key = list.currentData();
    return key.isValid() ? std::optional(key.toLongLong()) : std::nullopt;
}

QString frmAuswertung::kurierText(const QComboBox& list) {
    return kurierOf(list) ? tr(", Kurier %1").arg(list.currentText()) : QString();
}

QString frmAuswertung::total(double amount) {
    return common::formatNumber(amount, u"#,0.00");
}

void frmAuswertung::print(const QString& reportFile, const QString& title,
                          const std::function<void(const platform::Progress&)>& fillPrintTables) {
    platform::printList(m_services, platform::installedReport(reportFile, title), fillPrintTables);
}

void frmAuswertung::setUpGrid(platform::DataGrid& grid, platform::DataControl& rows) {
    rows.setConnection(ConnMain);
    grid.setDataControl(rows);
    grid.setEmptyText(tr("Keine Bestellungen"));
}

bool frmAuswertung::event(QEvent* event) {
    if (event->type() == QEvent::ParentChange)
        if (auto* window = qobject_cast<QMdiSubWindow*>(parentWidget()))
            connectGuarded(Origin::User, window, &QMdiSubWindow::aboutToActivate, this, [this, window] {
                // A message box or another program in front leaves the screen the present one.
                if (!window->mdiArea() || window->mdiArea()->currentSubWindow() != window)
                    activated();
            });
    return QWidget::event(event);
}

void frmAuswertung::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    // In the main window the frame around the screen tells.
    if (!event->spontaneous() && !qobject_cast<QMdiSubWindow*>(parentWidget()))
        common::guarded(Origin::User, [this] { activated(); });
}
