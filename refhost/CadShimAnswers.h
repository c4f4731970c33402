#pragma once
// How the CAD application answers the module's questions during one job, for as long as a
// JobAnswers object lives: the host application hands over what its user said in advance
// (an answer on its command line) and who may be asked for the rest. Everything is as
// before once the object goes. Not part of the CAD application's interface.

#include "refhost/CadShimDialogs.h"
#include "refhost/CadShimRecording.h"

#include <vector>

namespace CadShim {

class JobAnswers {
public:
    // answers: taken first, one per command-line prompt. askOnTerminal: after them, the
    // person at the terminal is asked (when standard input is one); otherwise a prompt
    // without an answer is cancelled. showDialogs false: no dialog is shown, so each question
    // goes to the command line; true leaves dialogs as the application set them.
    JobAnswers(const std::vector<WString>& answers, bool askOnTerminal, bool showDialogs)
        : terminalBefore_(TerminalPromptsAllowed()), dialogsBefore_(DialogsAllowed())
    {
        ClearKeywordAnswers();
        QueueKeywordAnswers(answers);
        AllowTerminalPrompts(askOnTerminal);
        if (!showDialogs)
            AllowDialogs(false);
    }
    ~JobAnswers()
    {
        ClearKeywordAnswers();
        AllowTerminalPrompts(terminalBefore_);
        AllowDialogs(dialogsBefore_);
    }
    JobAnswers(const JobAnswers&) = delete;
    JobAnswers& operator=(const JobAnswers&) = delete;

private:
    const bool terminalBefore_;
    const bool dialogsBefore_;
};

} // namespace CadShim
