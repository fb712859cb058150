#include "orders/frmAuftragswesenVorbestellungenAlarm.h"
#include "common/Guard.h"
#include "desks/MainDesks.h"
#include "orders/modAuftragswesenVorbestellungen.h"
#include "platform/Navigation.h"
#include "ui_frmAuftragswesenVorbestellungenAlarm.h"
#include <QAccessible>
#include <QMouseEvent>
#include <QShortcut>

using common::connectGuarded;
using common::Origin;

frmAuftragswesenVorbestellungenAlarm::frmAuftragswesenVorbestellungenAlarm(const platform::Services& services,
                                                                           QWidget* parent) :
    QFrame(parent),
    m_ui(std::make_unique<Ui::frmAuftragswesenVorbestellungenAlarm>()), m_services(services) {
    m_ui->setupUi(this);
    setAutoFillBackground(true);
    m_ui->lbl_Titel->setText(windowTitle());
    // The colours of the waiting call: seen from across the room, whatever the palette.
    m_ui->lbl_Titel->setStyleSheet(
        QStringLiteral("background: #ffb300; color: black; font-weight: bold; padding: 8px 12px;"));
    QFont big = m_ui->txt_AuftragsNr->font();
    big.setPointSizeF(big.pointSizeF() * 1.6);
    big.setBold(true);
    m_ui->txt_AuftragsNr->setFont(big);
    connectGuarded(Origin::User, m_ui->txt_AuftragsNr, &QPushButton::clicked, this,
                   [this](bool) { txt_AuftragsNr_Click(); });
    connectGuarded(Origin::User, m_ui->cmdClose, &QPushButton::clicked, this, [this](bool) { close(); });
    connectGuarded(Origin::User, new QShortcut(QKeySequence(Qt::Key_F10), this), &QShortcut::activated, this,
                   [this] { txt_AuftragsNr_Click(); });
    connectGuarded(Origin::User, new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_F10), this),
                   &QShortcut::activated, this, [this] { close(); });
}

frmAuftragswesenVorbestellungenAlarm::~frmAuftragswesenVorbestellungenAlarm() = default;

void frmAuftragswesenVorbestellungenAlarm::setFaellig(qint64 trxNr, const QString& kunde) {
    m_trxNr = trxNr;
    const QString number = QString::number(trxNr);
    m_ui->txt_AuftragsNr->setText(number);
    m_ui->lbl_Kunde->setText(kunde);
    m_ui->lbl_Kunde->setVisible(!kunde.isEmpty());
    adjustSize();
    m_ui->txt_AuftragsNr->setAccessibleDescription(QStringLiteral("%1 %2").arg(number, kunde));
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
    if (auto* window = platform::mainDesk<desks::Attention>(m_services.navigation))
        window->callAttention();
}

void frmAuftragswesenVorbestellungenAlarm::txt_AuftragsNr_Click() {
    const qint64 trxNr = m_trxNr;
    close();
    if (trxNr == 0 || !modAuftragswesenVorbestellungen::TakeOnVorbestellung(trxNr, m_services.dialogs))
        return;
    if (auto* list = platform::showDesk<desks::PreOrderList>(m_services.navigation))
        list->ShowVorbestellung(trxNr);
}

void frmAuftragswesenVorbestellungenAlarm::mousePressEvent(QMouseEvent* event) {
    m_grip = event->pos();
}

void frmAuftragswesenVorbestellungenAlarm::mouseMoveEvent(QMouseEvent* event) {
    const QPoint free(parentWidget()->width() - width(), parentWidget()->height() - height());
    const QPoint to = mapToParent(event->pos() - m_grip);
    move(qBound(0, to.x(), qMax(0, free.x())), qBound(0, to.y(), qMax(0, free.y())));
}
