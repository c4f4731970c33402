#pragma once
// The CAD shim's process-wide state, shared by its parts. Driven from the user-interface
// thread only, like the CAD application it stands in for.

#include "refhost/CadShimRecording.h"

#include <deque>
#include <string>
#include <vector>

namespace CadShim {

struct ShimState {
    std::vector<WString> alerts;
    std::vector<WString> prompts;
    std::vector<WString> keywordsGiven; // one per prompt, empty where none was given
    std::vector<DocumentCall> documentCalls;
    std::vector<LinkerCall> linkerCalls;
    std::vector<CommandStackCall> commandStackCalls;
    int classHierarchyBuilds = 0;
    int classBranchDeletes = 0;

    std::deque<WString> keywordAnswers;
    WString keywords; // set by acedInitGet for the next acedGetKword
    bool terminalPrompts = false;
    std::vector<std::string> supportPath;
};

ShimState& State();

} // namespace CadShim
