#pragma once
#include "desks/PreOrderDesk.h"
#include "platform/Services.h"
#include <QFrame>
#include <memory>

namespace Ui {
class frmAuftragswesenVorbestellungenAlarm;
}

/// Tells of a due pre-order without taking the keys: it is a part of the window that it stands in, its
/// buttons take no focus by the mouse and have no mnemonics, since those would take the order screen's. F10
/// goes to the pre-order, Ctrl+F10 closes. It can be dragged out of the way.
class frmAuftragswesenVorbestellungenAlarm : public QFrame, public desks::PreOrderAlarm {
    Q_OBJECT
  public:
    /// The services outlive the screen.
    explicit frmAuftragswesenVorbestellungenAlarm(const platform::Services& services,
                                                  QWidget* parent = nullptr);
    ~frmAuftragswesenVorbestellungenAlarm() override;

    void setFaellig(qint64 trxNr, const QString& kunde) override;

    qint64 Faellig() const override { return m_trxNr; }

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

  private:
    void txt_AuftragsNr_Click();

    std::unique_ptr<Ui::frmAuftragswesenVorbestellungenAlarm> m_ui;
    platform::Services m_services;
    qint64 m_trxNr = 0;
    QPoint m_grip;
};
