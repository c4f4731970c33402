#include "host/CadPlatform.h"
#include "refhost/cad/ShimState.h"

namespace {

// Results of the document manager as the CAD application gives them.
constexpr int kOk = 0;
constexpr int kInvalidInput = 3;

// The CAD application always has one drawing open; the shim's is this document.
class ShimDocManager final : public AcApDocManager {
public:
    AcApDocument* curDocument() const override { return &document_; }

    int lockDocument(AcApDocument* document) override
    {
        CadShim::State().documentCalls.push_back({CadShim::DocumentCall::Kind::Lock, document});
        return document == &document_ ? kOk : kInvalidInput;
    }

    int unlockDocument(AcApDocument* document) override
    {
        CadShim::State().documentCalls.push_back({CadShim::DocumentCall::Kind::Unlock, document});
        return document == &document_ ? kOk : kInvalidInput;
    }

private:
    mutable AcApDocument document_;
};

} // namespace

AcApDocument::~AcApDocument() = default;
AcApDocManager::~AcApDocManager() = default;

AcApDocManager* acDocManagerPtr()
{
    static ShimDocManager manager;
    return &manager;
}
