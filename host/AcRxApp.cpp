#include "host/AcRxApp.h"

#include <algorithm>

namespace {

template <class Service>
Service* SystemService(const WChar* key)
{
    AcRxDictionary* registry = acrxSysRegistry();
    return registry ? dynamic_cast<Service*>(registry->at(key)) : nullptr;
}

// The CAD application's command stack, looked up only when there are commands to handle.
AcEdCommandStack* CommandStackFor(const AcRxTable<AcRxCommandEntry>& commands)
{
    return commands.size() ? SystemService<AcEdCommandStack>(WTEXT("ACAD_REGISTERED_COMMANDS")) : nullptr;
}

bool SameText(const WChar* left, const WChar* right)
{
    if (!left || !right)
        return left == right;
    return std::char_traits<WChar>::length(left) == std::char_traits<WChar>::length(right) &&
           std::char_traits<WChar>::compare(left, right, std::char_traits<WChar>::length(left)) == 0;
}

} // namespace

// Indexed by the message code.
const AcRxDbxApp::Handler AcRxDbxApp::handlers_[kMessageCount] = {
    &AcRxDbxApp::On_kNullMsg,        &AcRxDbxApp::On_kInitAppMsg,     &AcRxDbxApp::On_kUnloadAppMsg,
    &AcRxDbxApp::On_kLoadDwgMsg,     &AcRxDbxApp::On_kUnloadDwgMsg,   &AcRxDbxApp::On_kInvkSubrMsg,
    &AcRxDbxApp::On_kCfgMsg,         &AcRxDbxApp::On_kEndMsg,         &AcRxDbxApp::On_kQuitMsg,
    &AcRxDbxApp::On_kSaveMsg,        &AcRxDbxApp::On_kDependencyMsg,  &AcRxDbxApp::On_kNoDependencyMsg,
    &AcRxDbxApp::On_kOleUnloadAppMsg, &AcRxDbxApp::On_kPreQuitMsg,    &AcRxDbxApp::On_kInitDialogMsg,
    &AcRxDbxApp::On_kEndDialogMsg,   &AcRxDbxApp::On_kSuspendMsg,
};

AcRxDbxApp::AcRxDbxApp(AcRxTable<AcRxClassEntry> classes) : classes_(classes) {}

AcRxDbxApp::~AcRxDbxApp() = default;

AcRx::AppRetCode AcRxDbxApp::Dispatch(int message, void* appData)
{
    if (message < 0 || message >= kMessageCount)
        return AcRx::kRetOK;
    return (this->*handlers_[message])(appData);
}

AcRx::AppRetCode AcRxDbxApp::On_kInitAppMsg(void* appData)
{
    if (AcRxDynamicLinker* linker = SystemService<AcRxDynamicLinker>(WTEXT("DynamicLinker"))) {
        if (unlocked_)
            linker->unlockApplication(appData);
        if (mdiAware_)
            linker->registerAppMDIAware(appData);
    }
    for (const AcRxClassEntry& entry : classes_)
        entry.initialise();
    acrxBuildClassHierarchy();
    return AcRx::kRetOK;
}

AcRx::AppRetCode AcRxDbxApp::On_kUnloadAppMsg(void*)
{
    for (const AcRxClassEntry& entry : classes_)
        deleteAcRxClassBranch(entry.descriptor());
    return AcRx::kRetOK;
}

// The remaining messages ask nothing of an application that has no use for them.
AcRx::AppRetCode AcRxDbxApp::On_kNullMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kLoadDwgMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kUnloadDwgMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kInvkSubrMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kCfgMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kEndMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kQuitMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kSaveMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kDependencyMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kNoDependencyMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kOleUnloadAppMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kPreQuitMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kInitDialogMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kEndDialogMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kSuspendMsg(void*) { return AcRx::kRetOK; }

AcRxArxApp::AcRxArxApp(AcRxTable<AcRxClassEntry> classes, AcRxTable<AcRxCommandEntry> commands,
                       AcRxTable<AcRxFunctionEntry> functions)
    : AcRxDbxApp(classes), commands_(commands), functions_(functions)
{
}

AcRx::AppRetCode AcRxArxApp::On_kInitAppMsg(void* appData)
{
    const AcRx::AppRetCode result = AcRxDbxApp::On_kInitAppMsg(appData);
    AddCommands();
    return result;
}

AcRx::AppRetCode AcRxArxApp::On_kUnloadAppMsg(void* appData)
{
    const AcRx::AppRetCode result = AcRxDbxApp::On_kUnloadAppMsg(appData);
    RemoveCommandGroups();
    return result;
}

// Each document gets the module's scripting functions, numbered by their place in the table.
AcRx::AppRetCode AcRxArxApp::On_kLoadDwgMsg(void*)
{
    int code = 0;
    for (const AcRxFunctionEntry& entry : functions_) {
        acedDefun(entry.name, code);
        acedRegFunc(entry.function, code);
        ++code;
    }
    return AcRx::kRetOK;
}

AcRx::AppRetCode AcRxArxApp::On_kUnloadDwgMsg(void*)
{
    int code = 0;
    for (const AcRxFunctionEntry& entry : functions_)
        acedUndef(entry.name, code++);
    return AcRx::kRetOK;
}

// A function code that names none of the module's functions is not the module's call.
AcRx::AppRetCode AcRxArxApp::On_kInvkSubrMsg(void*)
{
    const int code = acedGetFunCode();
    if (code >= 0 && static_cast<std::size_t>(code) < functions_.size())
        functions_.begin()[code].function();
    return AcRx::kRetOK;
}

// The module keeps no string resources of its own on this platform, so a command without a
// local name is known locally by its global name.
void AcRxArxApp::AddCommands()
{
    AcEdCommandStack* stack = CommandStackFor(commands_);
    if (!stack)
        return;
    for (const AcRxCommandEntry& entry : commands_) {
        const WChar* localName = entry.localName ? entry.localName : entry.globalName;
        stack->addCommand(entry.groupName, entry.globalName, localName, entry.flags, entry.function);
    }
}

// Each group once, however many of its commands the table holds.
void AcRxArxApp::RemoveCommandGroups()
{
    AcEdCommandStack* stack = CommandStackFor(commands_);
    if (!stack)
        return;
    for (const AcRxCommandEntry* entry = commands_.begin(); entry != commands_.end(); ++entry) {
        const bool seen = std::any_of(commands_.begin(), entry, [entry](const AcRxCommandEntry& earlier) {
            return SameText(earlier.groupName, entry->groupName);
        });
        if (!seen)
            stack->removeGroup(entry->groupName);
    }
}
