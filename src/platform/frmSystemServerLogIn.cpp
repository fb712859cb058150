#include "platform/frmSystemServerLogIn.h"
#include "common/Guard.h"
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace platform {

using namespace Qt::StringLiterals;

namespace {

constexpr int kTick = 100;
constexpr qsizetype kMostDots = 15;

} // namespace

frmSystemServerLogIn::frmSystemServerLogIn(std::function<bool()> stillExecuting, QWidget* parent) :
    QDialog(parent), m_stillExecuting(std::move(stillExecuting)), lbl_Progress(new QLabel(this)) {
    setWindowTitle(u"Tavolino"_s);
    auto* lbl_ServerConnection = new QLabel(u"Connecting to Server"_s, this);
    lbl_ServerConnection->setObjectName(u"lbl_ServerConnection"_s);
    lbl_Progress->setObjectName(u"lbl_Progress"_s);
    lbl_Progress->setMinimumWidth(220);
    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(tr("&Abbrechen"), QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    for (QWidget* part : std::initializer_list<QWidget*>{lbl_ServerConnection, lbl_Progress, buttons})
        layout->addWidget(part);
    Timer1.setInterval(kTick);
    common::connectGuarded(common::Origin::Timer, &Timer1, &QTimer::timeout, this,
                           [this] { Timer1_Timer(); });
    Timer1.start();
}

void frmSystemServerLogIn::Timer1_Timer() {
    const QString dots = lbl_Progress->text();
    lbl_Progress->setText(dots.size() + 1 < kMostDots ? dots + u'.' : u"."_s);
    if (!m_stillExecuting())
        accept();
}

} // namespace platform
