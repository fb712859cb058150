#include "maintenance/frmSystemAbout.h"
#include "common/Guard.h"
#include "maintenance/modSystemAbout.h"
#include "platform/Dialogs.h"
#include "platform/Libraries.h"
#include "platform/OperatingSystem.h"
#include "platform/line/LineSettings.h"
#include "platform/net/Internet.h"
#include "store/StoreGlobals.h"
#include "ui_frmSystemAbout.h"
#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QPointer>
#include <QProcess>
#include <QScreen>

using namespace Qt::StringLiterals;
using common::connectGuarded;
using common::Origin;

namespace {

QString display(const QWidget& window) {
    const QSize size = window.screen()->size();
    return u"%1, %2 x %3, %4"_s.arg(QGuiApplication::platformName())
        .arg(size.width())
        .arg(size.height())
        .arg(window.devicePixelRatioF());
}

bool hasTelephone() {
    const auto line = platform::LineSettings::read(store::appPath() + u"/tavolino.ini"_s);
    return line.kind != platform::LineSettings::Kind::None;
}

} // namespace

frmSystemAbout::frmSystemAbout(const platform::Services& services, QWidget* parent) :
    QWidget(parent), m_ui(std::make_unique<Ui::frmSystemAbout>()), m_services(services) {
    m_ui->setupUi(this);
    m_ui->lbl_Bild->setPixmap(QIcon(u":/icons/tavolino.svg"_s).pixmap(m_ui->lbl_Bild->minimumSize()));
    m_ui->txt_VersionNumber->setText(modSystemAbout::Version());
    m_ui->txt_Ordner->setText(QDir::toNativeSeparators(store::appPath()));
    m_ui->txt_Ordner->setCursorPosition(0);
    m_ui->txt_Angaben->setPlainText(platform::libraries().join(u'\n'));
    for (QLineEdit* told : {m_ui->txt_VersionNumber, m_ui->txt_Ordner}) {
        QPalette plain;
        plain.setColor(QPalette::Base, Qt::transparent);
        told->setPalette(plain);
    }
    connectGuarded(Origin::User, m_ui->cmdSysInfo, &QPushButton::clicked, this, [this] { StartSysInfo(); });
    connectGuarded(Origin::User, m_ui->cmdDiagnose, &QPushButton::clicked, this,
                   [this] { cmdDiagnose_Click(); });
    connectGuarded(Origin::User, m_ui->cmdClose, &QPushButton::clicked, this, [this] { close(); });
}

frmSystemAbout::~frmSystemAbout() = default;

void frmSystemAbout::StartSysInfo() {
    const QStringList program = platform::systemInformation();
    if (program.isEmpty() || !QProcess::startDetached(program.first(), program.mid(1)))
        m_services.dialogs.MsgBox(tr("System Information Is Unavailable At This Time"));
}

void frmSystemAbout::cmdDiagnose_Click() {
    const QPointer<frmSystemAbout> alive(this);
    try {
        const QString text = modSystemAbout::Diagnosis(
            {platform::libraries(), display(*this), m_services.internet.endpoints(), hasTelephone()},
            m_services.dialogs.ShowProgress(tr("Die Datenbank wird ausgezählt.")));
        QGuiApplication::clipboard()->setText(text);
        if (!alive)
            return;
        m_ui->lbl_Angaben->setText(tr("Diese Diagnose liegt jetzt in der Zwischenablage:"));
        m_ui->txt_Angaben->setPlainText(text);
    } catch (const platform::GivenUp&) {
    }
}
