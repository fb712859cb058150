#include "maintenance/frmHelpStepByStep.h"
#include "common/Guard.h"
#include "maintenance/frmHelpPicture.h"
#include "maintenance/modHelpStepByStep.h"
#include "platform/Dialogs.h"
#include "platform/Navigation.h"
#include "store/StoreGlobals.h"
#include "ui_frmHelpStepByStep.h"
#include <QHBoxLayout>
#include <QTextBrowser>

using namespace Qt::StringLiterals;
using common::connectGuarded;
using common::Origin;
using modHelpStepByStep::Step;

namespace {

constexpr int kTextWidth = 330;

QTextBrowser* textOf(const Step& step, int number) {
    auto* text = new QTextBrowser;
    text->setObjectName(u"txt_Schritt_%1"_s.arg(number));
    text->setAccessibleName(step.caption);
    text->setHtml(step.text);
    text->setFixedWidth(kTextWidth);
    text->setFrameShape(QFrame::NoFrame);
    text->viewport()->setAutoFillBackground(false);
    return text;
}

} // namespace

frmHelpStepByStep::frmHelpStepByStep(const platform::Services& services, QWidget* parent) :
    QWidget(parent), m_ui(std::make_unique<Ui::frmHelpStepByStep>()), m_services(services) {
    m_ui->setupUi(this);
    for (const Step& step : modHelpStepByStep::steps())
        addPage(step);
    m_ui->opt_StepByStep->setChecked(modHelpStepByStep::ShowsAtStart(m_services.registry));
    connectGuarded(Origin::User, m_ui->opt_StepByStep, &QCheckBox::clicked, this,
                   [this](bool ticked) { modHelpStepByStep::SetShowsAtStart(m_services.registry, ticked); });
    connectGuarded(Origin::User, m_ui->SSTab1, &QTabWidget::currentChanged, this,
                   [this](int page) { showPage(page); });
    connectGuarded(Origin::User, m_ui->cmdZurueck, &QPushButton::clicked, this,
                   [this] { m_ui->SSTab1->setCurrentIndex(m_ui->SSTab1->currentIndex() - 1); });
    connectGuarded(Origin::User, m_ui->cmdWeiter, &QPushButton::clicked, this,
                   [this] { m_ui->SSTab1->setCurrentIndex(m_ui->SSTab1->currentIndex() + 1); });
    connectGuarded(Origin::User, m_ui->cmdClose, &QPushButton::clicked, this, [this] { close(); });
    showPage(0);
    m_ui->cmdWeiter->setFocus();
}

frmHelpStepByStep::~frmHelpStepByStep() = default;

void frmHelpStepByStep::addPage(const Step& step) {
    auto* page = new QWidget;
    const int number =
        m_ui->SSTab1->addTab(page, u"%1 %2"_s.arg(m_ui->SSTab1->count() + 1).arg(step.caption)) + 1;
    auto* columns = new QHBoxLayout(page);
    auto* left = new QVBoxLayout;
    columns->addLayout(left);
    columns->addWidget(new frmHelpPicture(store::appPath() + u"/docs/bilder/"_s + step.picture), 1);
    left->addWidget(textOf(step, number), 1);
    if (step.button.isEmpty())
        return;
    auto* button = new QPushButton(step.buttonText);
    button->setObjectName(step.button);
    left->addWidget(button);
    connectGuarded(Origin::User, button, &QPushButton::clicked, this,
                   [this, screen = step.screen] { open(screen); });
}

void frmHelpStepByStep::open(const QString& screen) {
    if (m_services.navigation.hasScreen(screen))
        m_services.navigation.showScreen(screen);
    else
        m_services.dialogs.MsgBox(
            tr("Dafür fehlt Ihnen das Recht. Wer Administrator ist, kann es Ihnen in der Benutzer Verwaltung "
               "geben."),
            platform::kInformation, windowTitle());
}

void frmHelpStepByStep::showPage(int page) {
    m_ui->cmdZurueck->setEnabled(page > 0);
    m_ui->cmdWeiter->setEnabled(page + 1 < m_ui->SSTab1->count());
}
