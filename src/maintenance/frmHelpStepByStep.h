#pragma once
#include "platform/Services.h"
#include <QWidget>
#include <memory>

namespace Ui {
class frmHelpStepByStep;
}

namespace modHelpStepByStep {
struct Step;
}

/// Leads a new user through the set-up, a tab a step. Open to everybody: what the user may not open says so.
class frmHelpStepByStep : public QWidget {
    Q_OBJECT
  public:
    explicit frmHelpStepByStep(const platform::Services& services, QWidget* parent = nullptr);
    ~frmHelpStepByStep() override;

  private:
    void addPage(const modHelpStepByStep::Step& step);
    void open(const QString& screen);
    void showPage(int page);

    std::unique_ptr<Ui::frmHelpStepByStep> m_ui;
    platform::Services m_services;
};
