#include "platform/chart/ChartCanvas.h"
#include "platform/form/Contrast.h"
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace platform {

ChartCanvas::ChartCanvas(QWidget* parent) : QWidget(parent), m_note(new QLabel(this)) {
    setObjectName(u"ChartCanvas"_s);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    m_note->setObjectName(u"lbl_ChartWert"_s);
    m_note->setTextFormat(Qt::PlainText);
    m_note->setWordWrap(true);
    m_note->setFrameShape(QFrame::Box);
    m_note->setMargin(4);
    m_note->setAutoFillBackground(true);
    m_note->setBackgroundRole(QPalette::ToolTipBase);
    m_note->setForegroundRole(QPalette::ToolTipText);
    m_note->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_note->hide();
}

void ChartCanvas::setChart(const Chart& chart) {
    m_chart = chart.arranged();
    m_pointed.reset();
    m_chosen.reset();
    setFocusPolicy(m_chart.isEmpty() ? Qt::NoFocus : Qt::StrongFocus);
    setAccessibleName(m_chart.title.isEmpty() ? tr("Bild") : m_chart.title);
    layOutAnew();
}

void ChartCanvas::setEmptyText(const QString& text) {
    m_emptyText = text;
    layOutAnew();
}

const ChartPicture* ChartCanvas::picture() {
    if (!m_picture && !m_chart.isEmpty())
        m_picture.emplace(m_chart, ChartLook::onScreen(palette(), font()), size());
    return m_picture ? &*m_picture : nullptr;
}

std::optional<ChartPlace> ChartCanvas::told() const {
    return m_pointed ? m_pointed : hasFocus() ? m_chosen : std::nullopt;
}

void ChartCanvas::layOutAnew() {
    m_picture.reset();
    showNote();
    update();
}

void ChartCanvas::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Active, QPalette::Base));
    if (const ChartPicture* shown = picture()) {
        shown->draw(painter);
    } else {
        painter.setPen(quietInk(palette(), palette().color(QPalette::Active, QPalette::Base)));
        painter.drawText(rect().adjusted(8, 8, -8, -8), Qt::AlignCenter | Qt::TextWordWrap, m_emptyText);
    }
    painter.setBrush(Qt::NoBrush);
    if (const auto place = told()) {
        painter.setPen(QPen(palette().color(QPalette::Active, QPalette::Text), 2));
        painter.drawRect(m_picture->mark(*place).adjusted(-2, -2, 2, 2));
    }
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Active, QPalette::Highlight), 2));
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
}

void ChartCanvas::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    layOutAnew();
}

void ChartCanvas::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange)
        layOutAnew();
}

void ChartCanvas::mouseMoveEvent(QMouseEvent* event) {
    const ChartPicture* shown = picture();
    const auto place = shown ? shown->at(event->position()) : std::nullopt;
    if (place == m_pointed)
        return;
    m_pointed = place;
    showNote();
}

void ChartCanvas::mousePressEvent(QMouseEvent* event) {
    QWidget::mousePressEvent(event);
    if (const ChartPicture* shown = picture())
        m_chosen = shown->at(event->position());
    showNote();
}

void ChartCanvas::leaveEvent(QEvent* event) {
    QWidget::leaveEvent(event);
    m_pointed.reset();
    showNote();
}

void ChartCanvas::keyPressEvent(QKeyEvent* event) {
    constexpr int kPage = 10;
    const int all = int(m_chart.labels.size());
    const bool ranked = m_chart.kind == Chart::Ranked;
    switch (event->key()) {
    case Qt::Key_Left:
        return ranked ? step(0, -1) : step(-1, 0);
    case Qt::Key_Right:
        return ranked ? step(0, 1) : step(1, 0);
    case Qt::Key_Up:
        return ranked ? step(-1, 0) : step(0, -1);
    case Qt::Key_Down:
        return ranked ? step(1, 0) : step(0, 1);
    case Qt::Key_PageUp:
        return step(-kPage, 0);
    case Qt::Key_PageDown:
        return step(kPage, 0);
    case Qt::Key_Home:
        return step(-all, 0);
    case Qt::Key_End:
        return step(all, 0);
    default:
        QWidget::keyPressEvent(event);
    }
}

/// The first key begins with the first value.
void ChartCanvas::step(int places, int series) {
    if (m_chart.isEmpty())
        return;
    const bool begins = !m_chosen;
    const ChartPlace from = m_chosen.value_or(ChartPlace());
    const int last = int(m_chart.labels.size()) - 1, lastSeries = int(m_chart.series.size()) - 1;
    const int index = begins && places < last ? 0 : int(from.index) + places;
    m_chosen = ChartPlace{size_t(qBound(0, int(from.series) + (begins ? 0 : series), lastSeries)),
                          size_t(qBound(0, index, last))};
    m_pointed.reset();
    showNote();
}

void ChartCanvas::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    showNote();
}

void ChartCanvas::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    showNote();
}

void ChartCanvas::showNote() {
    const auto place = told();
    m_note->setVisible(place.has_value());
    if (place) {
        m_note->setText(m_chart.note(place->series, place->index));
        placeNote();
    }
    setAccessibleDescription(place ? m_note->text() : QString());
    update();
}

/// Above the value where there is room, and never beyond the picture.
void ChartCanvas::placeNote() {
    constexpr int kGap = 6;
    const QRect mark = picture()->mark(*told()).toAlignedRect();
    const int widest = width() - 2 * kGap;
    const QSize text = m_note->fontMetrics().size(0, m_note->text());
    const int frame = 2 * (m_note->margin() + m_note->frameWidth()) + 2;
    const int wide = qMin(widest, text.width() + frame);
    const QSize box(wide, m_note->heightForWidth(wide));
    const int above = mark.top() - box.height() - kGap;
    const int left = qBound(0, mark.center().x() - box.width() / 2, qMax(0, width() - box.width()));
    const int top = above >= 0 ? above : qMin(mark.bottom() + kGap, height() - box.height());
    m_note->setGeometry(QRect(QPoint(left, qMax(0, top)), box));
    m_note->raise();
}

} // namespace platform
