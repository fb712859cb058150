#include "shop/frmOnlineShopTransfer.h"
#include "common/Guard.h"
#include "desks/MainDesks.h"
#include "platform/Dialogs.h"
#include "platform/Navigation.h"
#include "platform/form/KeepPlace.h"
#include "platform/net/Endpoints.h"
#include "platform/net/Internet.h"
#include "shop/TransferView.h"
#include "shop/modOnlineShopDB.h"
#include "shop/mod_InternetTransfer.h"
#include "ui_frmOnlineShopTransfer.h"
#include <QCloseEvent>
#include <QPointer>

using namespace Qt::StringLiterals;
using common::connectGuarded;
using common::Origin;

namespace {

/// The controls, as long as they are there: the program may take its windows down while a file goes up.
class Controls : public shop::TransferView {
  public:
    explicit Controls(const Ui::frmOnlineShopTransfer& ui) :
        m_status(ui.lblStatus), m_typ(ui.lblDateiTyp), m_verzeichnis(ui.lblDateiVerzeichnis),
        m_name(ui.lblDateiName), m_bar(ui.ProgressBar), m_messages(ui.listStatusMsg) {}

    ~Controls() override { Controls::setWaiting(false); }

    void setStatus(const QString& text) override { show(m_status, text); }

    void setDateiTyp(const QString& text) override { show(m_typ, text); }

    void setDateiVerzeichnis(const QString& text) override { show(m_verzeichnis, text); }

    void setDateiName(const QString& text) override { show(m_name, text); }

    void setProgress(int value) override {
        change(m_bar, [value](QProgressBar& bar) { bar.setValue(value); });
    }

    void setProgressMaximum(int value) override {
        change(m_bar, [value](QProgressBar& bar) { bar.setMaximum(value); });
    }

    void showProgressBar(bool visible) override {
        change(m_bar, [visible](QProgressBar& bar) { bar.setVisible(visible); });
    }

    void addStatusMsg(const QString& line) override {
        change(m_messages, [&line](QListWidget& list) { list.addItem(line); });
    }

    void setWaiting(bool waiting) override {
        if (std::exchange(m_waiting, waiting) == waiting)
            return;
        waiting ? QApplication::setOverrideCursor(Qt::WaitCursor) : QApplication::restoreOverrideCursor();
    }

  private:
    template <typename Control, typename Act> static void change(const QPointer<Control>& control, Act act) {
        if (!control)
            return;
        act(*control);
        control->repaint();
    }

    static void show(const QPointer<QLabel>& label, const QString& text) {
        change(label, [&text](QLabel& shown) { shown.setText(text); });
    }

    QPointer<QLabel> m_status, m_typ, m_verzeichnis, m_name;
    QPointer<QProgressBar> m_bar;
    QPointer<QListWidget> m_messages;
    bool m_waiting = false;
};

} // namespace

frmOnlineShopTransfer::frmOnlineShopTransfer(const platform::Services& services, QWidget* parent) :
    QWidget(parent), m_ui(std::make_unique<Ui::frmOnlineShopTransfer>()), m_services(services) {
    m_ui->setupUi(this);
    // The controls below keep their places when the bar goes.
    platform::keepPlaceWhenHidden(*m_ui->ProgressBar);
    showAddresses();
    enableUpdate();
    connectGuarded(Origin::User, m_ui->check_Agreement, &QCheckBox::toggled, this,
                   [this] { enableUpdate(); });
    connectGuarded(Origin::User, m_ui->cmdUpdate, &QPushButton::clicked, this, [this] { cmdUpdate_Click(); });
    connectGuarded(Origin::User, m_ui->cmdClose, &QPushButton::clicked, this, [this] { close(); });
}

frmOnlineShopTransfer::~frmOnlineShopTransfer() {
    if (m_transfer)
        m_transfer->giveUp();
}

void frmOnlineShopTransfer::showAddresses() {
    const platform::Endpoints& ends = m_services.internet.endpoints();
    m_ui->lbl_PfadInternetAdresse->setText(ends.hasShop() ? ends.script(u"Page_Order.asp"_s) : QString());
    m_ui->lbl_PfadDomainMapping->setText(ends.strDomainMapping);
}

void frmOnlineShopTransfer::enableUpdate() {
    m_ui->cmdUpdate->setEnabled(m_ui->check_Agreement->isChecked() && !m_transfer);
}

void frmOnlineShopTransfer::cmdUpdate_Click() {
    const QString missing = m_services.internet.endpoints().missingForUpload();
    if (!missing.isEmpty()) {
        m_services.dialogs.MsgBox(missing, platform::kInformation, windowTitle());
        return;
    }
    const QPointer<frmOnlineShopTransfer> alive(this);
    const QString outcome = run();
    if (!alive)
        return;
    enableUpdate();
    desks::showMessage(m_services.navigation, outcome);
    if (m_closing)
        close();
}

QString frmOnlineShopTransfer::run() {
    /// Told of the run's end, also by an error.
    struct Underway {
        QPointer<frmOnlineShopTransfer> screen;

        ~Underway() {
            if (screen)
                screen->m_transfer = nullptr;
        }
    };

    Controls controls(*m_ui);
    mod_InternetTransfer::Transfer transfer(m_services, controls);
    m_transfer = &transfer;
    const Underway underway{this};
    enableUpdate();
    controls.showProgressBar(true);
    modOnlineShopDB::CreateOnlineShopDB(controls, m_services.dialogs);
    transfer.ConnectToFTP();
    if (underway.screen)
        transfer.UploadFiles({m_ui->check_Pictures->isChecked(), m_ui->check_DB->isChecked()});
    transfer.DisconnectFTP();
    return transfer.outcome();
}

void frmOnlineShopTransfer::closeEvent(QCloseEvent* event) {
    if (!m_transfer)
        return QWidget::closeEvent(event);
    m_closing = true;
    m_transfer->giveUp();
    event->ignore();
}
