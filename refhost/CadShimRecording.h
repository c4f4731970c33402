#pragma once
// The reference CAD shim's side door: what the module asked of the CAD application, recorded
// for tests, and the few settings the host application makes (support path, answers for
// command-line prompts). Not part of the CAD application's interface.

#include "host/CadPlatform.h"
#include "host/HostApi.h"
#include "host/Text.h"

#include <string>
#include <vector>

namespace CadShim {

struct DocumentCall {
    enum class Kind { Lock, Unlock };
    Kind kind;
    AcApDocument* document;
};

struct LinkerCall {
    enum class Kind { UnlockApplication, RegisterAppMDIAware };
    Kind kind;
    void* appId;
};

struct CommandStackCall {
    enum class Kind { AddCommand, RemoveGroup };
    Kind kind;
    WString groupName;
    WString globalName; // AddCommand only, like the fields below
    WString localName;
    int flags = 0;
    void (*function)() = nullptr;
};

struct FunctionDefinition {
    WString name;
    int code;
};

// Results of the command stack besides 0 (done).
constexpr int kDuplicateCommand = 1; // addCommand: the group already has that global name
constexpr int kGroupNotFound = 2;    // removeGroup: no command of that group is registered

// Every text given to acedAlert, in order.
VELTOGIS_CAD_API const std::vector<WString>& RecordedAlerts();
// Every prompt acedGetKword showed (or would have shown), in order.
VELTOGIS_CAD_API const std::vector<WString>& RecordedPrompts();
// The keyword each of those prompts returned, in the same order; empty where none was given.
VELTOGIS_CAD_API const std::vector<WString>& RecordedKeywords();
VELTOGIS_CAD_API const std::vector<DocumentCall>& DocumentManagerCalls();
VELTOGIS_CAD_API const std::vector<LinkerCall>& LinkerCalls();
VELTOGIS_CAD_API const std::vector<CommandStackCall>& CommandStackCalls();
VELTOGIS_CAD_API int ClassHierarchyBuildCount();
VELTOGIS_CAD_API int ClassBranchDeleteCount();
// Forgets the recordings above and any queued keyword answers. Registered commands,
// scripting functions and settings stay.
VELTOGIS_CAD_API void ClearRecordings();

// The scripting functions defined now (acedDefun less acedUndef), in definition order.
VELTOGIS_CAD_API const std::vector<FunctionDefinition>& DefinedFunctions();
// Calls a scripting function the way the CAD application does: from now on acedGetFunCode
// returns functionCode; a function registered for the code with acedRegFunc is called and
// its result returned. Without one, RTERROR: the application would be sent kInvkSubrMsg,
// which is the caller's to send.
VELTOGIS_CAD_API int InvokeFunction(int functionCode);

// Answers that acedGetKword takes, one per call, before anybody is asked on the terminal.
VELTOGIS_CAD_API void QueueKeywordAnswers(const std::vector<WString>& answers);
// Lets acedGetKword ask on the terminal when no queued answer is left and standard input is
// a terminal. Off by default, so that tests never wait for a person; without an answer the
// prompt is cancelled (RTCAN).
VELTOGIS_CAD_API void AllowTerminalPrompts(bool allow);
VELTOGIS_CAD_API bool TerminalPromptsAllowed();
// Forgets the keyword answers not taken yet.
VELTOGIS_CAD_API void ClearKeywordAnswers();

// Folders that acedFindFile searches, in order, after the path as given.
VELTOGIS_CAD_API void SetSupportPath(const std::vector<std::string>& folders);

} // namespace CadShim
