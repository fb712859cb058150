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
constexpr int kTextWidth = 420;
constexpr qsizetype kMostDots = 15;

} // namespace

frmSystemServerLogIn::frmSystemServerLogIn(std::function<bool()> stillExecuting, const QString& text,
                                           QWidget* parent) :
    QDialog(parent),
    m_stillExecuting(std::move(stillExecuting)), lbl_Progress(new QLabel(this)) {
    setWindowTitle(u"Tavolino"_s);
    auto* lbl_ServerConnection = new QLabel(text.isEmpty() ? u"Connecting to Server"_s : text, this);
    lbl_ServerConnection->setObjectName(u"lbl_ServerConnection"_s);
    lbl_ServerConnection->setTextFormat(Qt::PlainText);
    if (!text.isEmpty()) {
        lbl_ServerConnection->setWordWrap(true);
        lbl_ServerConnection->setMinimumWidth(kTextWidth);
    }
    lbl_Progress->setObjectName(u"lbl_Progress"_s);
    lbl_Progress->setMinimumWidth(220);
    auto* buttons = new QDialogButtonBox(this);
    QPushButton* giveUp = buttons->addButton(tr("&Abbrechen"), QDialogButtonBox::RejectRole);
    // What is waited for without having been asked for is not given up by a key typed ahead.
    giveUp->setAutoDefault(text.isEmpty());
    giveUp->setFocusPolicy(text.isEmpty() ? Qt::StrongFocus : Qt::NoFocus);
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
