// Waiting for the answer to a notice page.
#include "platform/qt/qt_message_box.h"

#include "platform/input_event.h"
#include "platform/qt/qt_event_pump.h"
#include "platform/qt/qt_windows.h"

#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <array>

namespace {

constexpr int kLongestMessage = 60'000; // milliseconds

// Virtual-key codes.
constexpr int kEscape = 27;
constexpr int kYes = 'Y';
constexpr int kNo = 'N';
constexpr std::array kMoves = {9, 37, 38, 39, 40}; // Tab and the arrows

// The indices of the two answers on the page.
enum Answer : int { kAnswerYes = 0, kAnswerNo = 1 };

std::optional<Answer> AnswerAt(const InputEvent& press) {
    const QRect screen(QPoint(0, 0), QGuiApplication::primaryScreen()->size());
    const std::vector<QRect> places = ChoicePlaces(screen, 2);
    for (const Answer answer : {kAnswerYes, kAnswerNo}) {
        if (places[answer].contains(static_cast<int>(press.x), static_cast<int>(press.y))) {
            return answer;
        }
    }
    return std::nullopt;
}

// The answer that an event gives; nothing when it only moves the selection or has no meaning.
std::optional<Answer> AnswerOf(const InputEvent& event, Notice& notice) {
    if (event.kind != InputKind::kKeyDown) {
        return AnswerAt(event);
    }
    if (std::find(kMoves.begin(), kMoves.end(), event.code) != kMoves.end()) {
        notice.chosen = notice.chosen == kAnswerYes ? kAnswerNo : kAnswerYes;
        return std::nullopt;
    }
    if (event.code == kYes) {
        return kAnswerYes;
    }
    return event.code == kEscape || event.code == kNo ? kAnswerNo : static_cast<Answer>(notice.chosen);
}

} // namespace

void QtMessageBox::PassUnheeded() {
    const QDeadlineTimer deadline(unheeded_);
    while (!deadline.hasExpired() && pump_.WaitForInput(static_cast<int>(deadline.remainingTime()))) {
    }
}

void QtMessageBox::ShowPage(const QString& title, const QStringList& lines, const QString& hint,
                            int milliseconds) {
    const QDeadlineTimer deadline(milliseconds);
    windows_.ShowNotice({.title = title, .lines = lines, .hint = hint, .choices = {}});
    PassUnheeded();
    pump_.WaitForInput(static_cast<int>(deadline.remainingTime()));
    windows_.HideNotice();
}

void QtMessageBox::Show(const QString& title, const QString& text) {
    ShowPage(title, text.split(u'\n'),
             QStringLiteral("Press any key. This page closes by itself after a minute."), kLongestMessage);
}

bool QtMessageBox::AskYesNo(const QString& title, const QString& text) {
    const QDeadlineTimer deadline(kLongestMessage);
    Notice notice{
        .title = title,
        .lines = text.split(u'\n'),
        .hint = QStringLiteral("Arrows choose, any other key answers. After a minute the answer is no."),
        .choices = {QStringLiteral("Yes"), QStringLiteral("No")},
        .chosen = kAnswerNo};
    windows_.ShowNotice(notice);
    PassUnheeded();
    std::optional<Answer> answer;
    while (!answer) {
        const auto event = pump_.WaitForInput(static_cast<int>(deadline.remainingTime()));
        answer = event ? AnswerOf(*event, notice) : kAnswerNo;
        windows_.ShowNotice(notice);
    }
    windows_.HideNotice();
    return *answer == kAnswerYes;
}
