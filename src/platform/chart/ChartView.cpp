#include "platform/chart/ChartView.h"
#include "common/Guard.h"
#include "platform/chart/ChartCanvas.h"
#include "platform/chart/ChartFiles.h"
#include <QHBoxLayout>
#include <QMenu>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace platform {

ChartView::ChartView(QWidget* parent) :
    QWidget(parent), m_canvas(new ChartCanvas(this)), m_bar(new QWidget(this)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->addWidget(m_canvas);
    column->addWidget(m_bar);
    auto* row = new QHBoxLayout(m_bar);
    row->setContentsMargins({});
    row->addStretch();
    m_save = addButton("cmdBildSpeichern", tr("Bild speichern …"), &ChartView::save);
    m_print = addButton("cmdBildDrucken", tr("Bild drucken"), &ChartView::print);
    m_bar->hide();
    setFocusProxy(m_canvas);
    m_canvas->setContextMenuPolicy(Qt::CustomContextMenu);
    common::connectGuarded(common::Origin::User, m_canvas, &QWidget::customContextMenuRequested, this,
                           [this](const QPoint& position) { showMenu(position); });
    setChart({});
}

QPushButton* ChartView::addButton(const char* name, const QString& text, void (ChartView::*act)()) {
    auto* button = new QPushButton(text, m_bar);
    button->setObjectName(QString::fromLatin1(name));
    m_bar->layout()->addWidget(button);
    common::connectGuarded(common::Origin::User, button, &QPushButton::clicked, this,
                           [this, act] { (this->*act)(); });
    return button;
}

void ChartView::setServices(const Services& services) {
    m_services.emplace(services);
    m_bar->show();
    enableActs();
}

void ChartView::setChart(Chart chart) {
    m_chart = std::move(chart);
    m_canvas->setChart(m_chart);
    enableActs();
}

void ChartView::setEmptyText(const QString& text) {
    m_canvas->setEmptyText(text);
}

void ChartView::enableActs() {
    for (QPushButton* button : {m_save, m_print})
        button->setEnabled(m_services && !m_chart.isEmpty());
}

void ChartView::showMenu(const QPoint& position) {
    if (!m_save->isEnabled())
        return;
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (QPushButton* button : {m_save, m_print})
        common::connectGuarded(common::Origin::User, menu->addAction(button->text()), &QAction::triggered,
                               button, [button] { button->click(); });
    menu->popup(m_canvas->mapToGlobal(position));
}

void ChartView::save() {
    saveChart(m_chart, m_services->dialogs);
}

void ChartView::print() {
    printChart(m_chart, *m_services);
}

} // namespace platform
