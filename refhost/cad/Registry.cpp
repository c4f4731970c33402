#include "host/CadPlatform.h"
#include "refhost/cad/ShimState.h"

#include <algorithm>
#include <string_view>

using CadShim::CommandStackCall;
using CadShim::State;

namespace {

class ShimDynamicLinker final : public AcRxDynamicLinker {
public:
    bool unlockApplication(void* appId) const override
    {
        State().linkerCalls.push_back({CadShim::LinkerCall::Kind::UnlockApplication, appId});
        return true;
    }

    bool registerAppMDIAware(void* appId) const override
    {
        State().linkerCalls.push_back({CadShim::LinkerCall::Kind::RegisterAppMDIAware, appId});
        return true;
    }
};

struct RegisteredCommand {
    WString group;
    WString globalName;
};

class ShimCommandStack final : public AcEdCommandStack {
public:
    int addCommand(const WChar* groupName, const WChar* globalName, const WChar* localName, int flags,
                   void (*function)()) override
    {
        CommandStackCall call{CommandStackCall::Kind::AddCommand, Text(groupName), Text(globalName),
                              Text(localName), flags, function};
        State().commandStackCalls.push_back(call);
        const bool known = std::any_of(commands_.begin(), commands_.end(), [&call](const RegisteredCommand& command) {
            return command.group == call.groupName && command.globalName == call.globalName;
        });
        if (known)
            return CadShim::kDuplicateCommand;
        commands_.push_back({call.groupName, call.globalName});
        return 0;
    }

    int removeGroup(const WChar* groupName) override
    {
        const WString group = Text(groupName);
        State().commandStackCalls.push_back({CommandStackCall::Kind::RemoveGroup, group, WString(), WString(), 0, nullptr});
        const auto end = std::remove_if(commands_.begin(), commands_.end(),
                                        [&group](const RegisteredCommand& command) { return command.group == group; });
        const bool found = end != commands_.end();
        commands_.erase(end, commands_.end());
        return found ? 0 : CadShim::kGroupNotFound;
    }

private:
    static WString Text(const WChar* text) { return text ? text : WTEXT(""); }

    std::vector<RegisteredCommand> commands_;
};

class ShimSystemRegistry final : public AcRxDictionary {
public:
    AcRxObject* at(const WChar* key) const override
    {
        if (!key)
            return nullptr;
        const std::basic_string_view<WChar> name(key);
        if (name == WTEXT("DynamicLinker"))
            return &linker_;
        if (name == WTEXT("ACAD_REGISTERED_COMMANDS"))
            return &commands_;
        return nullptr;
    }

private:
    mutable ShimDynamicLinker linker_;
    mutable ShimCommandStack commands_;
};

} // namespace

AcRxObject::~AcRxObject() = default;
AcRxClass::~AcRxClass() = default;
AcRxDynamicLinker::~AcRxDynamicLinker() = default;
AcEdCommandStack::~AcEdCommandStack() = default;
AcRxDictionary::~AcRxDictionary() = default;

AcRxDictionary* acrxSysRegistry()
{
    static ShimSystemRegistry registry;
    return &registry;
}

// The shim has no class tree of its own; it counts how often the module rebuilds and prunes it.
void acrxBuildClassHierarchy() { ++State().classHierarchyBuilds; }

void deleteAcRxClassBranch(AcRxClass* /*root*/) { ++State().classBranchDeletes; }
