// The host calls the engines through their virtual tables: every operation must sit in the
// slot the framework expects, and registration must hand over the importer first.

#include "export/ExportEngine_Txt.h"
#include "host/ImpexEngines.h"
#include "import/ImportEngine_Txt.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>

using namespace VeltoGis::ImportExport;

namespace {

#if defined(__GNUC__) && !defined(_MSC_VER)
constexpr bool kItaniumAbi = true;
#else
constexpr bool kItaniumAbi = false;
#endif

// On the Itanium C++ ABI a pointer to a virtual member function holds 1 + the byte offset
// of its slot in the virtual table. The destructor takes two entries there (complete and
// deleting) where the framework counts one slot, so slot k > 0 is entry k + 1.
template <class Member>
long VtableEntry(Member member)
{
    struct {
        std::uintptr_t pointer;
        std::ptrdiff_t adjustment;
    } representation;
    static_assert(sizeof(member) == sizeof(representation), "an Itanium member-function pointer");
    std::memcpy(&representation, &member, sizeof representation);
    if ((representation.pointer & 1) == 0)
        return -1; // not virtual
    return static_cast<long>((representation.pointer - 1) / sizeof(void*));
}

template <class Member>
std::pair<long, int> Slot(Member member, int slot)
{
    return {VtableEntry(member), slot + 1};
}

} // namespace

TEST(EngineInterfaceSlots, ImportEngineOperationsSitInTheFrameworksSlots)
{
    if (!kItaniumAbi)
        GTEST_SKIP() << "reads the Itanium ABI's member-function pointers";
    using I = IImportEngine;
    using E = CImportEngine_Txt;
    const std::vector<std::pair<long, int>> slots = {
        Slot(&I::PrepareImport, 1),           Slot(&I::ImportCapability2, 2),     Slot(&I::ImportPoints, 3),
        Slot(&I::ImportLines, 4),             Slot(&I::ImportPolygons, 5),        Slot(&I::UpdateLinkedTableRows, 6),
        Slot(&I::ImportLinkedTableRows, 7),   Slot(&I::ImportTableRows, 8),       Slot(&I::ImportCloud, 9),
        Slot(&I::GetImportExtension, 10),     Slot(&I::GetSourceDataDefinitions, 11), Slot(&I::Configure, 12),
        Slot(&I::GetDescription, 13),         Slot(&I::ValidateDefinition, 14),   Slot(&I::ImportCapability15, 15),
        Slot(&I::ConfigureForFile, 16),       Slot(&I::ImportCapability17, 17),   Slot(&I::GetRequiredTargetIds, 18),
        Slot(&I::GetExcludedTargetIds, 19),   Slot(&I::ImportCapability20, 20),   Slot(&I::GetPrimaryFilePath, 21),
        Slot(&I::GetSecondaryFilePath, 22),   Slot(&I::AllowPrimaryFilePathEdit, 23),
        Slot(&I::AllowSecondaryFilePathEdit, 24), Slot(&I::SetPrimaryFilePath, 25), Slot(&I::SetSecondaryFilePath, 26),
        Slot(&I::GetFileFilter, 27),
        // The engine adds nothing in between: its overrides land in the same entries.
        Slot(&E::PrepareImport, 1), Slot(&E::ImportCloud, 9), Slot(&E::ConfigureForFile, 16),
        Slot(&E::SetSecondaryFilePath, 26)};
    for (std::size_t i = 0; i < slots.size(); ++i)
        EXPECT_EQ(slots[i].first, slots[i].second) << "row " << i;
}

TEST(EngineInterfaceSlots, ExportEngineOperationsSitInTheFrameworksSlots)
{
    if (!kItaniumAbi)
        GTEST_SKIP() << "reads the Itanium ABI's member-function pointers";
    using I = IExportEngine;
    using E = CExportEngine_Txt;
    const std::vector<std::pair<long, int>> slots = {
        Slot(&I::GetExportEntityName, 1),  Slot(&I::PrepareExport, 2),      Slot(&I::ExportCapability3, 3),
        Slot(&I::ExportPoints, 4),         Slot(&I::ExportLines, 5),        Slot(&I::ExportPolygons, 6),
        Slot(&I::ExportCapability7, 7),    Slot(&I::ExportCapability8, 8),  Slot(&I::GetDescription, 9),
        Slot(&I::ExportCapability10, 10),  Slot(&I::ExportCapability11, 11), Slot(&I::ExportCapability12, 12),
        Slot(&I::ExportNotify13, 13),      Slot(&I::ExportNotify14, 14),    Slot(&I::Configure, 15),
        Slot(&I::ExportCapability16, 16),  Slot(&I::ExportCapability17, 17), Slot(&I::GetPrimaryFilePath, 18),
        Slot(&I::GetSecondaryFilePath, 19), Slot(&I::AllowPrimaryFilePathEdit, 20),
        Slot(&I::AllowSecondaryFilePathEdit, 21), Slot(&I::SetPrimaryFilePath, 22), Slot(&I::SetSecondaryFilePath, 23),
        Slot(&I::GetFileFilter, 24),
        Slot(&E::GetExportEntityName, 1), Slot(&E::Configure, 15), Slot(&E::SetSecondaryFilePath, 23)};
    for (std::size_t i = 0; i < slots.size(); ++i)
        EXPECT_EQ(slots[i].first, slots[i].second) << "row " << i;
    // The plug-in info object's one operation comes before its destructor.
    EXPECT_EQ(VtableEntry(&IImpexPluginInfo::RegisterEngines), 0);
}
