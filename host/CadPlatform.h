#pragma once
// The CAD application's programming interface as the module uses it (BRX/ObjectARX style),
// plus the runtime's module protocol. Implemented by the CAD application; on Linux by the
// reference host's CAD shim.

#include "host/HostApi.h"
#include "host/Text.h"

#include <cstddef>

// Geometry ---------------------------------------------------------------------------

struct AcGePoint3d {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    AcGePoint3d() = default;
    AcGePoint3d(double xValue, double yValue, double zValue) : x(xValue), y(yValue), z(zValue) {}
};

// User interaction ---------------------------------------------------------------------

// Shows a message box with the text; returns when the user has closed it.
VELTOGIS_CAD_API int acedAlert(const WChar* message);

// Finds a file along the CAD application's support path; writes the full path into result
// (at most resultLength units with the NUL) and returns 5100 (RTNORM) when found.
VELTOGIS_CAD_API int acedFindFile(const WChar* name, WChar* result, int resultLength);

// Command-line prompts, the CAD application's way of asking when no dialog is shown.
constexpr int RTNONE = 5000;  // the user entered nothing
constexpr int RTCAN = -5002;  // the user cancelled (or nobody can be asked)
// Sets the keywords (separated by blanks) that the next acedGetKword accepts.
VELTOGIS_CAD_API int acedInitGet(int flags, const WChar* keywords);
// Asks with the prompt for one of the keywords set by acedInitGet and writes the keyword
// into result (at most resultLength units with the NUL). RTNORM when answered.
VELTOGIS_CAD_API int acedGetKword(const WChar* prompt, WChar* result, int resultLength);

// Documents -----------------------------------------------------------------------------

class VELTOGIS_CAD_API AcApDocument {
public:
    virtual ~AcApDocument();
};

// The document manager. A plug-in's modal dialog is bracketed by lockDocument before it
// opens and unlockDocument after it has closed, so that the dialog may change the job's
// definitions while the document cannot be switched under it.
class VELTOGIS_CAD_API AcApDocManager {
public:
    virtual ~AcApDocManager();
    virtual AcApDocument* curDocument() const = 0;
    virtual int lockDocument(AcApDocument* document) = 0;
    virtual int unlockDocument(AcApDocument* document) = 0;
};

VELTOGIS_CAD_API AcApDocManager* acDocManagerPtr();

// Application messages and the dynamic linker --------------------------------------------

namespace AcRx {
enum AppMsgCode {
    kNullMsg = 0,
    kInitAppMsg = 1,
    kUnloadAppMsg = 2,
    kLoadDwgMsg = 3,
    kUnloadDwgMsg = 4,
    kInvkSubrMsg = 5,
    kCfgMsg = 6,
    kEndMsg = 7,
    kQuitMsg = 8,
    kSaveMsg = 9,
    kDependencyMsg = 10,
    kNoDependencyMsg = 11,
    kOleUnloadAppMsg = 12,
    kPreQuitMsg = 13,
    kInitDialogMsg = 14,
    kEndDialogMsg = 15,
    kSuspendMsg = 16
};
enum AppRetCode { kRetOK = 0, kRetError = 3 };
} // namespace AcRx

class VELTOGIS_CAD_API AcRxObject {
public:
    virtual ~AcRxObject();
};

class VELTOGIS_CAD_API AcRxClass : public AcRxObject {
public:
    ~AcRxClass() override;
};

class VELTOGIS_CAD_API AcRxDynamicLinker : public AcRxObject {
public:
    ~AcRxDynamicLinker() override;
    // Lets the application be unloaded while the CAD application runs.
    virtual bool unlockApplication(void* appId) const = 0;
    // Declares that the application works with several open documents.
    virtual bool registerAppMDIAware(void* appId) const = 0;
};

class VELTOGIS_CAD_API AcEdCommandStack : public AcRxObject {
public:
    ~AcEdCommandStack() override;
    virtual int addCommand(const WChar* groupName, const WChar* globalName, const WChar* localName,
                           int flags, void (*function)()) = 0;
    virtual int removeGroup(const WChar* groupName) = 0;
};

// The system registry: "DynamicLinker" gives the AcRxDynamicLinker,
// "ACAD_REGISTERED_COMMANDS" the AcEdCommandStack; null for any other key.
class VELTOGIS_CAD_API AcRxDictionary : public AcRxObject {
public:
    ~AcRxDictionary() override;
    virtual AcRxObject* at(const WChar* key) const = 0;
};

VELTOGIS_CAD_API AcRxDictionary* acrxSysRegistry();
VELTOGIS_CAD_API void acrxBuildClassHierarchy();
VELTOGIS_CAD_API void deleteAcRxClassBranch(AcRxClass* root);

// Scripting functions (the module defines none, but keeps the protocol).
constexpr int RTNORM = 5100;
constexpr int RTERROR = -5001;
VELTOGIS_CAD_API int acedRegFunc(int (*function)(), int functionCode);
VELTOGIS_CAD_API int acedDefun(const WChar* name, int functionCode);
VELTOGIS_CAD_API int acedUndef(const WChar* name, int functionCode);
VELTOGIS_CAD_API int acedGetFunCode();

// Runtime module protocol ----------------------------------------------------------------

VELTOGIS_CAD_API void* odrxAlloc(std::size_t size);
VELTOGIS_CAD_API void odrxFree(void* block);

// What the runtime hands to a module's odrxCreateModuleObject.
struct OdRxModuleRecord {
    const WChar* moduleName = nullptr;
    void* moduleHandle = nullptr;
};

// One loaded module as the runtime knows it. Allocate with odrxAlloc and construct in place.
class VELTOGIS_CAD_API OdRxModule {
public:
    explicit OdRxModule(const OdRxModuleRecord& record);
    virtual ~OdRxModule();
    virtual void initApp();
    virtual void uninitApp();
    const WString& moduleName() const { return moduleName_; }
    void* moduleHandle() const { return moduleHandle_; }

private:
    WString moduleName_;
    void* moduleHandle_;
};
