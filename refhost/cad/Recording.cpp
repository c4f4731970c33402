#include "refhost/cad/ShimState.h"

namespace CadShim {

ShimState& State()
{
    static ShimState state;
    return state;
}

const std::vector<WString>& RecordedAlerts() { return State().alerts; }
const std::vector<WString>& RecordedPrompts() { return State().prompts; }
const std::vector<WString>& RecordedKeywords() { return State().keywordsGiven; }
const std::vector<DocumentCall>& DocumentManagerCalls() { return State().documentCalls; }
const std::vector<LinkerCall>& LinkerCalls() { return State().linkerCalls; }
const std::vector<CommandStackCall>& CommandStackCalls() { return State().commandStackCalls; }
int ClassHierarchyBuildCount() { return State().classHierarchyBuilds; }
int ClassBranchDeleteCount() { return State().classBranchDeletes; }

void ClearRecordings()
{
    ShimState& state = State();
    state.alerts.clear();
    state.prompts.clear();
    state.keywordsGiven.clear();
    state.documentCalls.clear();
    state.linkerCalls.clear();
    state.commandStackCalls.clear();
    state.classHierarchyBuilds = 0;
    state.classBranchDeletes = 0;
    state.keywordAnswers.clear();
}

void QueueKeywordAnswers(const std::vector<WString>& answers)
{
    State().keywordAnswers.insert(State().keywordAnswers.end(), answers.begin(), answers.end());
}

void AllowTerminalPrompts(bool allow) { State().terminalPrompts = allow; }

bool TerminalPromptsAllowed() { return State().terminalPrompts; }

void ClearKeywordAnswers() { State().keywordAnswers.clear(); }

void SetSupportPath(const std::vector<std::string>& folders) { State().supportPath = folders; }

} // namespace CadShim
