#include "tests/support/TestDialogs.h"
#include "common/Guard.h"
#include <QTest>

namespace test {

namespace {

int buttonsOf(int style) {
    return style & 7;
}

int harmlessAnswer(int style) {
    switch (buttonsOf(style)) {
    case platform::kYesNo:
        return platform::kAnswerNo;
    case platform::kRetryCancel:
        return platform::kAnswerCancel;
    default:
        return platform::kAnswerOk;
    }
}

} // namespace

int TestDialogs::MsgBox(const QString& text, int style, const QString& title) {
    const common::NestedEventLoop loop;
    said.append({text, style, title});
    // A plain OK box has one answer; it does not use up the queue.
    if (buttonsOf(style) == platform::kOk)
        return platform::kAnswerOk;
    if (m_answers.isEmpty()) {
        ++unexpected;
        return harmlessAnswer(style);
    }
    const Answer answer = m_answers.dequeue();
    if (answer.before)
        answer.before();
    return answer.value;
}

QString TestDialogs::InputBox(const QString& prompt, const QString& title, const QString&) {
    const common::NestedEventLoop loop;
    said.append({prompt, 0, title});
    if (m_inputs.isEmpty()) {
        ++unexpected;
        return {};
    }
    return m_inputs.dequeue();
}

QString TestDialogs::OpenFile(const QString&, const QString&) {
    if (m_files.isEmpty()) {
        ++unexpected;
        return {};
    }
    return m_files.dequeue();
}

bool TestDialogs::WaitForServer(const std::function<bool()>& stillExecuting, const QString& text) {
    ++serverCalls;
    waitedWith = text;
    const common::NestedEventLoop loop;
    if (duringWait)
        duringWait();
    if (giveUp)
        return false;
    return QTest::qWaitFor([&] { return !stillExecuting(); }, 60'000);
}

platform::Progress TestDialogs::ShowProgress(const QString&) {
    return [this](qint64, qint64) {
        const common::NestedEventLoop loop;
        if (duringWork)
            duringWork();
        if (giveUp)
            throw platform::GivenUp();
    };
}

std::optional<platform::PrinterChoice> TestDialogs::ChoosePrinter(const platform::PrinterChoice& current) {
    primed.append(current);
    if (cancelPrinter)
        return {};
    return chosenPrinter.value_or(current);
}

QString TestDialogs::SaveFile(const QString&, const QString& name, const QStringList& suffixes) {
    suggested.append(name + u'.' + suffixes.join(u'|'));
    return savePath;
}

void TestDialogs::answer(int boxAnswer, std::function<void()> before) {
    m_answers.enqueue({boxAnswer, std::move(before)});
}

void TestDialogs::answerInput(const QString& text) {
    m_inputs.enqueue(text);
}

void TestDialogs::answerFile(const QString& path) {
    m_files.enqueue(path);
}

} // namespace test
