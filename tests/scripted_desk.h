// A desk that answers what a test expects, in the order of the script. A question that nobody
// expects and an answer that nobody asks for fail the test.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <string>

#include "platform/desk.h"

class ScriptedDesk : public Desk {
public:
    ~ScriptedDesk() override {
        EXPECT_TRUE(script_.empty()) << "nobody asked about " << script_.front().part;
    }
    // `part` stands somewhere in the box's text.
    void Expect(std::string part, int answer = IDOK) {
        script_.push_back({eKind::box, std::move(part), answer, {}});
    }
    // `part` stands somewhere in the question as `asked` below has it; an empty path cancels.
    void ExpectFile(std::string part, WText path) {
        script_.push_back({eKind::file, std::move(part), 0, std::move(path)});
    }
    void ExpectFolder(std::string part, WText path) {
        script_.push_back({eKind::folder, std::move(part), 0, std::move(path)});
    }
    // `part` stands somewhere in the files or, in the Windows build, the entries of the menu; an
    // answer below 0 closes it.
    void ExpectMenu(std::string part, int answer) {
        script_.push_back({eKind::menu, std::move(part), answer, {}});
    }

    // Nothing more is expected.
    bool IsDone() const { return script_.empty(); }

    int AnswerMenu(const MenuQuestion& question) override {
        WText all;
        for (const WText& text : question.files)
            all += text + TEXT(";");
        for (const WText& text : question.entries)
            all += text + TEXT(";");
        const Step step = Take(eKind::menu, wtext::ToUtf8(all));
        return step.part.empty() ? -1 : step.answer;
    }
    int AnswerMessageBox(const MessageBoxQuestion& question) override {
        const Step step = Take(eKind::box, wtext::ToUtf8(question.text));
        return step.answer != 0 ? step.answer : IDCANCEL;
    }
    WText AnswerFileQuestion(const FileQuestion& question) override {
        asked = question.title + TEXT("; ") + question.filters + TEXT("; ") + question.folder +
                (question.again ? TEXT("; again") : TEXT(""));
        return Take(eKind::file, wtext::ToUtf8(asked)).path;
    }
    WText AnswerFolderQuestion(const FolderQuestion& question) override {
        asked = question.title + TEXT("; ") + question.selected +
                (question.again ? TEXT("; again") : TEXT(""));
        return Take(eKind::folder, wtext::ToUtf8(asked)).path;
    }

    WText asked;  // the last question about a file or a folder

private:
    enum class eKind { box, file, folder, menu };
    struct Step {
        eKind kind;
        std::string part;
        int answer;
        WText path;
    };
    // A step that refuses when the question isn't the expected one.
    Step Take(eKind kind, const std::string& text) {
        if (script_.empty() || script_.front().kind != kind ||
            text.find(script_.front().part) == std::string::npos) {
            ADD_FAILURE() << "unexpected question: " << text;
            return {kind, {}, 0, {}};
        }
        const Step step = script_.front();
        script_.pop_front();
        return step;
    }

    std::deque<Step> script_;
};
