// The framework calls its engines through fixed vtable slots: a declaration moved in an
// interface would send the framework's calls to another operation. The slots are read from
// the compiler's own representation of pointers to virtual member functions.

#include "host/ImpexEngines.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <type_traits>
#include <vector>

using namespace VeltoGis::ImportExport;

namespace {

#if defined(__GNUC__) && !defined(_MSC_VER)
constexpr bool kItaniumAbi = true;
#else
constexpr bool kItaniumAbi = false;
#endif

// The vtable index of a virtual member function, or -1 for a non-virtual one. Itanium C++ ABI:
// the pointer is two words; for a virtual function one word holds the slot's byte offset,
// marked by its low bit (x86 and most others) or by the adjustment's low bit (ARM).
template <typename MemberFunction>
std::ptrdiff_t VtableIndex(MemberFunction function)
{
    static_assert(sizeof function == 2 * sizeof(std::ptrdiff_t), "two-word member function pointers");
    std::ptrdiff_t words[2];
    std::memcpy(words, &function, sizeof words);
#if defined(__arm__) || defined(__aarch64__)
    return (words[1] & 1) ? words[0] / static_cast<std::ptrdiff_t>(sizeof(void*)) : -1;
#else
    return (words[0] & 1) ? (words[0] - 1) / static_cast<std::ptrdiff_t>(sizeof(void*)) : -1;
#endif
}

struct Slot {
    const char* name;
    std::ptrdiff_t index;
};

// The framework's slot s (its destructor counts one slot, slot 0) is vtable index s + 1 under
// this ABI, whose virtual destructor takes two entries (complete and deleting).
void ExpectFrameworkOrder(const std::vector<Slot>& slots)
{
    for (std::size_t slot = 1; slot <= slots.size(); ++slot)
        EXPECT_EQ(slots[slot - 1].index, static_cast<std::ptrdiff_t>(slot + 1))
            << slots[slot - 1].name << " belongs in slot " << slot;
}

#define TESSEL_SLOT(Interface, operation) Slot{#operation, VtableIndex(&Interface::operation)}

static_assert(std::has_virtual_destructor<IImportEngine>::value, "slot 0 is the destructor");
static_assert(std::has_virtual_destructor<IExportEngine>::value, "slot 0 is the destructor");

TEST(EngineSlotOrder, ImportEngineOperationsSitInTheFrameworksSlots)
{
    if (!kItaniumAbi)
        GTEST_SKIP() << "reads member function pointers as the Itanium C++ ABI lays them out";
    ExpectFrameworkOrder({
        TESSEL_SLOT(IImportEngine, PrepareImport),            TESSEL_SLOT(IImportEngine, ImportCapability2),
        TESSEL_SLOT(IImportEngine, ImportPoints),             TESSEL_SLOT(IImportEngine, ImportLines),
        TESSEL_SLOT(IImportEngine, ImportPolygons),           TESSEL_SLOT(IImportEngine, UpdateLinkedTableRows),
        TESSEL_SLOT(IImportEngine, ImportLinkedTableRows),    TESSEL_SLOT(IImportEngine, ImportTableRows),
        TESSEL_SLOT(IImportEngine, ImportCloud),              TESSEL_SLOT(IImportEngine, GetImportExtension),
        TESSEL_SLOT(IImportEngine, GetSourceDataDefinitions), TESSEL_SLOT(IImportEngine, Configure),
        TESSEL_SLOT(IImportEngine, GetDescription),           TESSEL_SLOT(IImportEngine, ValidateDefinition),
        TESSEL_SLOT(IImportEngine, ImportCapability15),       TESSEL_SLOT(IImportEngine, ConfigureForFile),
        TESSEL_SLOT(IImportEngine, ImportCapability17),       TESSEL_SLOT(IImportEngine, GetRequiredTargetIds),
        TESSEL_SLOT(IImportEngine, GetExcludedTargetIds),     TESSEL_SLOT(IImportEngine, ImportCapability20),
        TESSEL_SLOT(IImportEngine, GetPrimaryFilePath),       TESSEL_SLOT(IImportEngine, GetSecondaryFilePath),
        TESSEL_SLOT(IImportEngine, AllowPrimaryFilePathEdit), TESSEL_SLOT(IImportEngine, AllowSecondaryFilePathEdit),
        TESSEL_SLOT(IImportEngine, SetPrimaryFilePath),       TESSEL_SLOT(IImportEngine, SetSecondaryFilePath),
        TESSEL_SLOT(IImportEngine, GetFileFilter),
    });
}

TEST(EngineSlotOrder, ExportEngineOperationsSitInTheFrameworksSlots)
{
    if (!kItaniumAbi)
        GTEST_SKIP() << "reads member function pointers as the Itanium C++ ABI lays them out";
    ExpectFrameworkOrder({
        TESSEL_SLOT(IExportEngine, GetExportEntityName),      TESSEL_SLOT(IExportEngine, PrepareExport),
        TESSEL_SLOT(IExportEngine, ExportCapability3),        TESSEL_SLOT(IExportEngine, ExportPoints),
        TESSEL_SLOT(IExportEngine, ExportLines),              TESSEL_SLOT(IExportEngine, ExportPolygons),
        TESSEL_SLOT(IExportEngine, ExportCapability7),        TESSEL_SLOT(IExportEngine, ExportCapability8),
        TESSEL_SLOT(IExportEngine, GetDescription),           TESSEL_SLOT(IExportEngine, ExportCapability10),
        TESSEL_SLOT(IExportEngine, ExportCapability11),       TESSEL_SLOT(IExportEngine, ExportCapability12),
        TESSEL_SLOT(IExportEngine, ExportNotify13),           TESSEL_SLOT(IExportEngine, ExportNotify14),
        TESSEL_SLOT(IExportEngine, Configure),                TESSEL_SLOT(IExportEngine, ExportCapability16),
        TESSEL_SLOT(IExportEngine, ExportCapability17),       TESSEL_SLOT(IExportEngine, GetPrimaryFilePath),
        TESSEL_SLOT(IExportEngine, GetSecondaryFilePath),     TESSEL_SLOT(IExportEngine, AllowPrimaryFilePathEdit),
        TESSEL_SLOT(IExportEngine, AllowSecondaryFilePathEdit), TESSEL_SLOT(IExportEngine, SetPrimaryFilePath),
        TESSEL_SLOT(IExportEngine, SetSecondaryFilePath),     TESSEL_SLOT(IExportEngine, GetFileFilter),
    });
}

// The plug-in info object's one operation comes before its destructor.
TEST(EngineSlotOrder, RegisterEnginesIsThePluginInfosFirstSlot)
{
    if (!kItaniumAbi)
        GTEST_SKIP() << "reads member function pointers as the Itanium C++ ABI lays them out";
    EXPECT_EQ(VtableIndex(&IImpexPluginInfo::RegisterEngines), 0);
}

} // namespace
