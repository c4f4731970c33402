#include "host/CadPlatform.h"
#include "host/Utf8.h"
#include "refhost/FilePath.h"
#include "refhost/cad/ShimState.h"
#include "refhost/dialogs/DialogState.h"

#include <unistd.h> // isatty

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

using CadShim::State;

namespace {

// Copies text with its NUL into result when it fits.
int CopyOut(const WString& text, WChar* result, int resultLength)
{
    if (!result || resultLength <= 0 || text.size() >= static_cast<std::size_t>(resultLength))
        return RTERROR;
    text.copy(result, text.size());
    result[text.size()] = 0;
    return RTNORM;
}

std::vector<WString> SplitKeywords(const WString& keywords)
{
    std::vector<WString> list;
    std::size_t start = 0;
    while (start < keywords.size()) {
        const std::size_t blank = keywords.find(WTEXT(' '), start);
        const std::size_t end = blank == WString::npos ? keywords.size() : blank;
        if (end > start)
            list.push_back(keywords.substr(start, end - start));
        start = end + 1;
    }
    return list;
}

WChar AsciiUpper(WChar c) { return c >= 'a' && c <= 'z' ? static_cast<WChar>(c - 'a' + 'A') : c; }

bool StartsWithIgnoringCase(const WString& keyword, const WString& answer)
{
    if (answer.empty() || answer.size() > keyword.size())
        return false;
    for (std::size_t i = 0; i < answer.size(); ++i) {
        if (AsciiUpper(keyword[i]) != AsciiUpper(answer[i]))
            return false;
    }
    return true;
}

// The keyword an answer stands for: the keyword itself or a prefix of exactly one keyword,
// without regard to case. Empty when it stands for none.
WString MatchKeyword(const std::vector<WString>& keywords, const WString& answer)
{
    WString match;
    for (const WString& keyword : keywords) {
        if (keyword.size() == answer.size() && StartsWithIgnoringCase(keyword, answer))
            return keyword;
        if (StartsWithIgnoringCase(keyword, answer)) {
            if (!match.empty())
                return WString(); // ambiguous
            match = keyword;
        }
    }
    return match;
}

WString Trimmed(const WString& text)
{
    const std::size_t first = text.find_first_not_of(WTEXT(" \t\r\n"));
    if (first == WString::npos)
        return WString();
    return text.substr(first, text.find_last_not_of(WTEXT(" \t\r\n")) - first + 1);
}

// The next answer: a queued one, else one typed on the terminal when that is allowed.
// False when nobody answers.
bool NextAnswer(const WString& prompt, WString& answer)
{
    CadShim::ShimState& state = State();
    if (!state.keywordAnswers.empty()) {
        answer = state.keywordAnswers.front();
        state.keywordAnswers.pop_front();
        return true;
    }
    if (!state.terminalPrompts || isatty(STDIN_FILENO) != 1)
        return false;
    std::fputs(ToUtf8(prompt).c_str(), stderr);
    std::fflush(stderr);
    std::string line;
    if (!std::getline(std::cin, line))
        return false;
    answer = FromUtf8(line);
    return true;
}

} // namespace

int acedAlert(const WChar* message)
{
    const WString text = message ? message : WTEXT("");
    State().alerts.push_back(text);
    CadShim::ShowAlertBox(text);
    const std::string line = "alert: " + ToUtf8(text) + "\n";
    std::fwrite(line.data(), 1, line.size(), stderr);
    return RTNORM;
}

int acedFindFile(const WChar* name, WChar* result, int resultLength)
{
    if (!name || !*name)
        return RTERROR;
    const std::filesystem::path given = refhost::PathFromWide(name);
    std::vector<std::filesystem::path> candidates{given};
    if (!given.has_root_directory()) {
        for (const std::string& folder : State().supportPath)
            candidates.push_back(refhost::PathFromUtf8(folder) / given);
    }
    for (const std::filesystem::path& candidate : candidates) {
        if (!refhost::IsRegularFile(candidate))
            continue;
        std::error_code error;
        const std::filesystem::path full = std::filesystem::canonical(candidate, error);
        const WString path = FromUtf8(refhost::PathToUtf8(error ? candidate : full));
        return CopyOut(path, result, resultLength);
    }
    return RTERROR;
}

int acedInitGet(int /*flags*/, const WChar* keywords)
{
    State().keywords = keywords ? keywords : WTEXT("");
    return RTNORM;
}

// Like the CAD command line: an empty answer is RTNONE, an answer that is not one of the
// keywords is asked again (a queued one is simply used up), no answer at all cancels.
int acedGetKword(const WChar* prompt, WChar* result, int resultLength)
{
    CadShim::ShimState& state = State();
    const std::vector<WString> keywords = SplitKeywords(state.keywords);
    state.keywords.clear(); // acedInitGet applies to the next prompt only
    const WString question = prompt ? prompt : WTEXT("");
    state.prompts.push_back(question);
    state.keywordsGiven.emplace_back();
    for (;;) {
        WString answer;
        if (!NextAnswer(question, answer))
            return RTCAN;
        answer = Trimmed(answer);
        if (answer.empty())
            return RTNONE;
        const WString keyword = MatchKeyword(keywords, answer);
        if (!keyword.empty()) {
            state.keywordsGiven.back() = keyword;
            return CopyOut(keyword, result, resultLength);
        }
        if (state.terminalPrompts && isatty(STDIN_FILENO) == 1 && state.keywordAnswers.empty())
            std::fputs("Invalid option keyword.\n", stderr);
    }
}
