#include "host/GisUtility.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace VeltoGis {
namespace {

struct MessageText {
    unsigned int id;
    const WChar* text;
};

// The English texts of the messages the text-file module uses, sorted by number. 60043 and
// 7876 are format strings with the file path as their one %s argument; 61051 has the path
// and then the system's reason; 61052 has two numbers, 61056 one. From 61100 the arguments
// are as host/Messages.h lists them.
constexpr MessageText kMessages[] = {
    {49, WTEXT("File exists")},
    {60, WTEXT("OK")},
    {67, WTEXT("Cancel")},
    {250, WTEXT("Text file")},
    {264, WTEXT("Format")},
    {276, WTEXT("Please enter the path of the output file.")},
    {425, WTEXT("Name")},
    {464, WTEXT("Column")},
    {910, WTEXT("Import")},
    {2620, WTEXT("Type")},
    {3204, WTEXT("Other")},
    {3205, WTEXT("Tab")},
    {3206, WTEXT("Space")},
    {3207, WTEXT("Delimiter")},
    {3208, WTEXT("Label")},
    {3229, WTEXT("Remove all column breaks")},
    {4048, WTEXT("Exporting to text file...")},
    {4563, WTEXT("File")},
    {7866, WTEXT("Text file export")},
    {7867, WTEXT("Text file export settings")},
    {7868, WTEXT("Output file:")},
    {7869, WTEXT("Comment:")},
    {7870, WTEXT("Delimiter:")},
    {7871, WTEXT("Write a header line")},
    {7872, WTEXT("Please enter a delimiter.")},
    {7873, WTEXT("Text file import")},
    {7874, WTEXT("Imports points, lines, polygons, table rows and point clouds from delimited or "
                 "fixed-width text files")},
    {7875, WTEXT("Importing text file...")},
    {7876, WTEXT("The file %s already exists. Overwrite it, append to it, or cancel the export?")},
    {7877, WTEXT("Overwrite")},
    {7878, WTEXT("Append")},
    {8481, WTEXT("The X and Y coordinates must be bound to columns of the file.")},
    {8482, WTEXT("The entity name must be bound to a column of the file.")},
    {9001, WTEXT("The start and end node names must be bound to columns of the file.")},
    {60043, WTEXT("Cannot open the file %s.")},
    {61050, WTEXT("Encoding")},
    {61051, WTEXT("Cannot write the file %s: %s. Nothing was changed.")},
    {61052, WTEXT("The lines have %d columns; only C1 to C%d are listed and imported.")},
    {61053, WTEXT("A character is missing from the code page: the configuration stores its default character.")},
    {61054, WTEXT("The configuration reads \u00D7 back as \".")},
    {61055, WTEXT("The configuration reads \" back as \u00D7.")},
    {61056, WTEXT("ANSI %d")},
    {61057, WTEXT("UTF-8")},
    {61058, WTEXT("UTF-16LE")},
    {61059, WTEXT("UTF-16BE")},
    {61100, WTEXT("line %d has %d columns, %s needs %d")},
    {61101, WTEXT("column %d %s on line %d is not a number")},
    {61102, WTEXT("the file has no lines to try it on")},
    {61103, WTEXT("the names line has %d names, %s needs %d")},
    {61104, WTEXT("northing and easting cannot be told apart: the points fall inside the coordinate system's area "
                  "of use in both orders; both are offered")},
    {61105, WTEXT("northing and easting cannot be told apart by the numbers; both orders are offered")},
    {61106, WTEXT("the names line tells northing from easting")},
    {61107, WTEXT("the points fall inside the coordinate system's area of use only in the order of %s")},
    {61110, WTEXT("%s (%s)")},
    {61111, WTEXT("%s (%s, first line holds the names)")},
    {61112, WTEXT("Fits every line: %s.")},
    {61113, WTEXT("%s does not fit: %s.")},
    {61114, WTEXT("No preset fits every line.")},
    {61115, WTEXT("Saved as %s.")},
    {61116, WTEXT("The preset %s cannot be saved: a name without path separators, not starting with a dot, "
                  "in a settings folder that can be written.")},
    {61117, WTEXT("The lines have %d columns; %s has %d. The columns are taken from the lines.")},
    {61118, WTEXT("%s: line %d holds %s, which is not %s.")},
    {61119, WTEXT("Not tried further with %s: line %d has none of them.")},
    {61120, WTEXT("%s: the file cannot be read")},
    {61121, WTEXT("%s: not an import configuration (no cfg element)")},
    {61122, WTEXT("%s: a fixed-width configuration, which a preset cannot be")},
};

constexpr bool IsSortedById()
{
    for (std::size_t i = 1; i < std::size(kMessages); ++i) {
        if (kMessages[i - 1].id >= kMessages[i].id)
            return false;
    }
    return true;
}
static_assert(IsSortedById(), "the message table is searched by bisection");

} // namespace

CModuleConfiguration* CModuleConfiguration::Instance()
{
    static CModuleConfiguration configuration;
    return &configuration;
}

WString CModuleConfiguration::GetMsg(unsigned int id) const
{
    const auto found = std::lower_bound(std::begin(kMessages), std::end(kMessages), id,
                                        [](const MessageText& message, unsigned int key) { return message.id < key; });
    if (found == std::end(kMessages) || found->id != id)
        return WString();
    return found->text;
}

} // namespace VeltoGis
