#pragma once
// The application framework that a CAD plug-in carries inside itself: the base classes
// AcRxDbxApp and AcRxArxApp, which turn the CAD application's messages into handler calls
// and register the module's classes, commands and scripting functions from three tables.
// This code is compiled into the module, as the CAD SDK does with its own copy.

#include "host/CadPlatform.h"
#include "host/Text.h"

#include <cstddef>

// A read-only table of entries, possibly empty.
template <class Entry>
class AcRxTable {
public:
    constexpr AcRxTable() = default;
    template <std::size_t count>
    constexpr AcRxTable(const Entry (&entries)[count]) : first_(entries), count_(count)
    {
    }
    const Entry* begin() const { return first_; }
    const Entry* end() const { return first_ + count_; }
    std::size_t size() const { return count_; }

private:
    const Entry* first_ = nullptr;
    std::size_t count_ = 0;
};

// A runtime class of the module: how to initialise it, and its class descriptor.
struct AcRxClassEntry {
    void (*initialise)();
    AcRxClass* (*descriptor)();
};

// A command of the module. A command without a local name gets one at start (see
// AcRxArxApp::AddCommands).
struct AcRxCommandEntry {
    const WChar* groupName;
    const WChar* globalName;
    const WChar* localName;
    int flags;
    void (*function)();
};

// A function callable from the CAD application's scripting language; its function code is
// its index in the table.
struct AcRxFunctionEntry {
    const WChar* name;
    int (*function)();
};

// The database side of an application: the unlock and MDI-aware declarations, the class
// table, and the dispatch of the application messages 0 to 16.
class AcRxDbxApp {
public:
    static constexpr int kMessageCount = AcRx::kSuspendMsg + 1;

    explicit AcRxDbxApp(AcRxTable<AcRxClassEntry> classes);
    virtual ~AcRxDbxApp();
    AcRxDbxApp(const AcRxDbxApp&) = delete;
    AcRxDbxApp& operator=(const AcRxDbxApp&) = delete;

    // Hands a message to its handler. Codes outside 0 to 16 are ignored and succeed.
    AcRx::AppRetCode Dispatch(int message, void* appData);

    bool IsUnlocked() const { return unlocked_; }
    bool IsMDIAware() const { return mdiAware_; }

    // Registers the module's server components with the system; for a host that asks.
    virtual void RegisterServerComponents() = 0;

    virtual AcRx::AppRetCode On_kNullMsg(void* appData);
    virtual AcRx::AppRetCode On_kInitAppMsg(void* appData);
    virtual AcRx::AppRetCode On_kUnloadAppMsg(void* appData);
    virtual AcRx::AppRetCode On_kLoadDwgMsg(void* appData);
    virtual AcRx::AppRetCode On_kUnloadDwgMsg(void* appData);
    virtual AcRx::AppRetCode On_kInvkSubrMsg(void* appData);
    virtual AcRx::AppRetCode On_kCfgMsg(void* appData);
    virtual AcRx::AppRetCode On_kEndMsg(void* appData);
    virtual AcRx::AppRetCode On_kQuitMsg(void* appData);
    virtual AcRx::AppRetCode On_kSaveMsg(void* appData);
    virtual AcRx::AppRetCode On_kDependencyMsg(void* appData);
    virtual AcRx::AppRetCode On_kNoDependencyMsg(void* appData);
    virtual AcRx::AppRetCode On_kOleUnloadAppMsg(void* appData);
    virtual AcRx::AppRetCode On_kPreQuitMsg(void* appData);
    virtual AcRx::AppRetCode On_kInitDialogMsg(void* appData);
    virtual AcRx::AppRetCode On_kEndDialogMsg(void* appData);
    virtual AcRx::AppRetCode On_kSuspendMsg(void* appData);

protected:
    bool unlocked_ = false;
    bool mdiAware_ = false;

private:
    using Handler = AcRx::AppRetCode (AcRxDbxApp::*)(void*);
    static const Handler handlers_[kMessageCount];

    AcRxTable<AcRxClassEntry> classes_;
};

// The editor side: adds the command table and the scripting functions.
class AcRxArxApp : public AcRxDbxApp {
public:
    AcRxArxApp(AcRxTable<AcRxClassEntry> classes, AcRxTable<AcRxCommandEntry> commands,
               AcRxTable<AcRxFunctionEntry> functions);

    AcRx::AppRetCode On_kInitAppMsg(void* appData) override;
    AcRx::AppRetCode On_kUnloadAppMsg(void* appData) override;
    AcRx::AppRetCode On_kLoadDwgMsg(void* appData) override;
    AcRx::AppRetCode On_kUnloadDwgMsg(void* appData) override;
    AcRx::AppRetCode On_kInvkSubrMsg(void* appData) override;

private:
    void AddCommands();
    void RemoveCommandGroups();

    AcRxTable<AcRxCommandEntry> commands_;
    AcRxTable<AcRxFunctionEntry> functions_;
};
