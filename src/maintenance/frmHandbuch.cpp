#include "maintenance/frmHandbuch.h"
#include "common/Guard.h"
#include "maintenance/frmHandbuchBilder.h"
#include "platform/form/Contrast.h"
#include "ui_frmHandbuch.h"
#include <QAbstractTextDocumentLayout>
#include <QFileInfo>
#include <QScrollBar>
#include <QShortcut>
#include <QShowEvent>
#include <QSignalBlocker>
#include <QTextTable>

using namespace Qt::StringLiterals;
using common::connectGuarded;
using common::Origin;

namespace {

/// Headings of chapters and their parts; the title of the manual is none.
bool isChapter(const QTextBlock& block) {
    const int level = block.blockFormat().headingLevel();
    return level == 2 || level == 3;
}

} // namespace

frmHandbuch::frmHandbuch(QWidget* parent) : QWidget(parent), m_ui(std::make_unique<Ui::frmHandbuch>()) {
    m_ui->setupUi(this);
    m_ui->splitter->setStretchFactor(1, 1);
    m_ui->splitter->setSizes({250, 780});
    showText();
    listChapters();
    setUpSearch();
    setUpKeys();
    connectGuarded(Origin::User, m_ui->txt_Handbuch, &QTextBrowser::anchorClicked, this,
                   [this](const QUrl& link) { followLink(link.fragment()); });
    connectGuarded(Origin::User, m_ui->txt_Handbuch->verticalScrollBar(), &QScrollBar::valueChanged, this,
                   [this] { markChapter(); });
    connectGuarded(Origin::User, m_ui->cmdClose, &QPushButton::clicked, this, [this] { close(); });
    m_ui->txt_Handbuch->setFocus();
}

frmHandbuch::~frmHandbuch() = default;

void frmHandbuch::showText() {
    QTextDocument& document = *m_ui->txt_Handbuch->document();
    document.setDocumentMargin(12);
    document.setIndentWidth(28);
    m_ui->txt_Handbuch->setMarkdown(modHandbuch::load());
    document.documentLayout()->registerHandler(
        QTextFormat::ImageObject, new frmHandbuchBilder(QFileInfo(modHandbuch::file()).path(), &document));
    polishTables();
    polishHeadings();
}

void frmHandbuch::polishHeadings() {
    constexpr int kAbove = 22;
    for (QTextBlock block = m_ui->txt_Handbuch->document()->begin(); block.isValid(); block = block.next()) {
        if (!isChapter(block))
            continue;
        QTextBlockFormat format = block.blockFormat();
        format.setTopMargin(kAbove);
        QTextCursor(block).setBlockFormat(format);
    }
}

void frmHandbuch::polishTables() {
    const QColor line =
        platform::mixed(palette().color(QPalette::Base), palette().color(QPalette::Text), 0.3);
    for (QTextFrame* frame : m_ui->txt_Handbuch->document()->rootFrame()->childFrames()) {
        auto* table = qobject_cast<QTextTable*>(frame);
        if (!table)
            continue;
        QTextTableFormat format = table->format();
        format.setBorder(1);
        format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
        format.setBorderBrush(line);
        format.setBorderCollapse(true);
        format.setCellPadding(4);
        format.setBottomMargin(8);
        table->setFormat(format);
    }
}

void frmHandbuch::listChapters() {
    const QSignalBlocker silent(m_ui->list_Kapitel);
    for (QTextBlock block = m_ui->txt_Handbuch->document()->begin(); block.isValid(); block = block.next()) {
        if (!isChapter(block))
            continue;
        m_headings << block;
        m_ui->list_Kapitel->addItem(block.blockFormat().headingLevel() == 3 ? u"      "_s + block.text()
                                                                            : block.text());
    }
    m_ui->list_Kapitel->setCurrentRow(0);
    connectGuarded(Origin::User, m_ui->list_Kapitel, &QListWidget::currentRowChanged, this,
                   [this](int row) { scrollTo(m_headings.value(row)); });
    // Once more, when the reader has scrolled within the chapter.
    connectGuarded(Origin::User, m_ui->list_Kapitel, &QListWidget::itemClicked, this,
                   [this] { scrollTo(m_headings.value(m_ui->list_Kapitel->currentRow())); });
}

void frmHandbuch::setUpSearch() {
    connectGuarded(Origin::User, m_ui->txt_Suche, &QLineEdit::textChanged, this, [this] { search(); });
    connectGuarded(Origin::User, m_ui->cmdWeiter, &QPushButton::clicked, this, [this] { nextHit(1); });
    connectGuarded(Origin::User, m_ui->cmdZurueck, &QPushButton::clicked, this, [this] { nextHit(-1); });
    search();
}

void frmHandbuch::setUpKeys() {
    const auto key = [this](QWidget* where, const QKeySequence& pressed, const std::function<void()>& act) {
        auto* shortcut = new QShortcut(pressed, where);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connectGuarded(Origin::User, shortcut, &QShortcut::activated, this, act);
    };
    key(this, QKeySequence::Find, [this] {
        m_ui->txt_Suche->setFocus();
        m_ui->txt_Suche->selectAll();
    });
    key(this, Qt::Key_Escape, [this] { close(); });
    for (const Qt::Key enter : {Qt::Key_Return, Qt::Key_Enter}) {
        key(m_ui->txt_Suche, enter, [this] { nextHit(1); });
        key(m_ui->txt_Suche, Qt::SHIFT | enter, [this] { nextHit(-1); });
    }
}

QTextBlock frmHandbuch::headingOf(const QString& chapter) const {
    for (const QTextBlock& heading : m_headings)
        if (modHandbuch::withoutNumber(heading.text()) == chapter)
            return heading;
    return {};
}

QTextBlock frmHandbuch::paragraphOf(const QTextBlock& heading, const QString& beginning) const {
    for (QTextBlock block = heading.next(); block.isValid() && !isChapter(block); block = block.next())
        if (block.text().startsWith(beginning))
            return block;
    return heading;
}

bool frmHandbuch::showPlace(const modHandbuch::Place& place) {
    const QTextBlock heading = headingOf(place.chapter);
    if (heading.isValid())
        scrollTo(place.paragraph.isEmpty() ? heading : paragraphOf(heading, place.paragraph));
    return heading.isValid();
}

void frmHandbuch::scrollTo(const QTextBlock& block) {
    if (!block.isValid())
        return;
    const QAbstractTextDocumentLayout& layout = *m_ui->txt_Handbuch->document()->documentLayout();
    // Laid out to its end, so that the scroll bar reaches there.
    (void)layout.documentSize();
    m_ui->txt_Handbuch->verticalScrollBar()->setValue(int(layout.blockBoundingRect(block).top()));
    m_ui->txt_Handbuch->setTextCursor(QTextCursor(block));
    m_ui->txt_Handbuch->verticalScrollBar()->setValue(int(layout.blockBoundingRect(block).top()));
    markChapter();
}

/// The place may have been looked for before the text had its width.
void frmHandbuch::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (!event->spontaneous())
        QMetaObject::invokeMethod(
            this, [this] { scrollTo(m_ui->txt_Handbuch->textCursor().block()); }, Qt::QueuedConnection);
}

QTextBlock frmHandbuch::blockAtTop() const {
    constexpr int kBelowTheEdge = 16;
    return m_ui->txt_Handbuch->cursorForPosition({kBelowTheEdge, kBelowTheEdge}).block();
}

QString frmHandbuch::textAtTop() const {
    return blockAtTop().text();
}

void frmHandbuch::markChapter() {
    const int top = blockAtTop().position();
    int row = 0;
    while (row + 1 < m_headings.size() && m_headings[row + 1].position() <= top)
        ++row;
    const QSignalBlocker silent(m_ui->list_Kapitel);
    m_ui->list_Kapitel->setCurrentRow(row);
}

void frmHandbuch::followLink(const QString& anchor) {
    for (const QTextBlock& heading : std::as_const(m_headings))
        if (modHandbuch::anchorOf(heading.text()) == anchor)
            return scrollTo(heading);
}

void frmHandbuch::search() {
    const QString text = m_ui->txt_Suche->text();
    const QTextDocument& document = *m_ui->txt_Handbuch->document();
    m_hits.clear();
    if (!text.isEmpty())
        for (QTextCursor hit = document.find(text); !hit.isNull(); hit = document.find(text, hit))
            m_hits << hit;
    for (QWidget* step : {m_ui->cmdWeiter, m_ui->cmdZurueck})
        step->setEnabled(!m_hits.isEmpty());
    // From what is being read, so that more letters do not lead away.
    const int from = m_hit < 0 ? blockAtTop().position() : m_ui->txt_Handbuch->textCursor().selectionStart();
    const auto first = std::find_if(m_hits.begin(), m_hits.end(),
                                    [from](const QTextCursor& hit) { return hit.selectionStart() >= from; });
    goToHit(m_hits.isEmpty() ? -1 : first == m_hits.end() ? 0 : first - m_hits.begin());
    if (m_hits.isEmpty())
        m_ui->lbl_Treffer->setText(text.isEmpty() ? QString() : tr("nicht gefunden"));
}

void frmHandbuch::goToHit(qsizetype hit) {
    m_hit = hit;
    QList<QTextEdit::ExtraSelection> marks;
    for (const QTextCursor& each : std::as_const(m_hits)) {
        QTextEdit::ExtraSelection mark;
        mark.cursor = each;
        const bool current = marks.size() == hit;
        mark.format.setBackground(current ? QColor(0xff, 0xb3, 0x00) : QColor(0xff, 0xe9, 0xa8));
        mark.format.setForeground(Qt::black);
        marks << mark;
    }
    m_ui->txt_Handbuch->setExtraSelections(marks);
    if (hit < 0)
        return;
    QTextCursor place = m_hits[hit];
    place.setPosition(place.selectionStart());
    m_ui->txt_Handbuch->setTextCursor(place);
    keepInSight();
    m_ui->lbl_Treffer->setText(tr("%1 von %2").arg(hit + 1).arg(m_hits.size()));
}

/// With some lines above and below.
void frmHandbuch::keepInSight() {
    const int height = m_ui->txt_Handbuch->viewport()->height();
    const int top = m_ui->txt_Handbuch->cursorRect().top();
    QScrollBar& bar = *m_ui->txt_Handbuch->verticalScrollBar();
    if (top < height / 10 || top > height * 8 / 10)
        bar.setValue(bar.value() + top - height / 3);
}

void frmHandbuch::nextHit(int step) {
    const qsizetype count = m_hits.size();
    if (count > 0)
        goToHit((m_hit + step + count) % count);
}
