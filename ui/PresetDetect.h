#pragma once
// Which survey presets fit a file: every preset is tried with each of its delimiters on the
// file's first non-comment lines (at most kMaxLines; the rest of the file is never read). A
// preset fits when every line has its number of columns and every number column converts.
// A first line of names (text where every later line has numbers) is taken as one header
// line, and its names become the column names. Where the fitting presets differ only in the
// order of northing and easting, the names line decides when it names them, then the area
// of use of the coordinate system when one is known (the order whose points fall inside
// comes first); otherwise both orders are offered and nothing is decided.

#include "host/Text.h"
#include "import/ImportTxtConfiguration.h"
#include "ui/SurveyPresets.h"

#include <cstdint>
#include <functional>
#include <vector>

struct DetectLine {
    std::uint64_t number = 0; // the line's number in the file, comments counted, from 1
    WString text;
};

// The first non-comment lines of the file (comment markers as the configuration's comment
// string gives them; "" marks none), at most maxLines. False when the file does not open.
bool ReadDetectLines(const WString& path, const WString& comments, std::vector<DetectLine>& lines,
                     std::size_t maxLines = 999);

struct DetectCandidate {
    const SurveyPreset* preset = nullptr;
    WString delimiter;                // one of the preset's alternatives
    int headerLines = 0;              // 1 when the first line holds the names
    std::vector<WString> columnNames; // the names line's, or the preset's
    bool fits = false;
    WString reason;                   // why it does not fit
    std::size_t pointsInsideArea = 0; // with an area of use: lines whose X, Y fall inside
    bool namesContradict = false;     // the names line calls a northing column east, or the reverse
    std::size_t firstLineFields = 0;  // the fields the delimiter cuts the first line into

    // The bind targets by column, the preset's.
    std::vector<WString> Targets() const;
};

// Whether a point (X easting, Y northing, in the file's coordinate system) lies in the area
// of use of the coordinate system.
using AreaOfUseTest = std::function<bool(double x, double y)>;

struct DetectResult {
    std::vector<DetectCandidate> fitting;  // best first
    std::vector<DetectCandidate> rejected; // with their reasons, in table order
    // The best fitting one is the only layout the evidence leaves (equal layouts under other
    // names, such as ENZ and XYZ, count as one).
    bool decided = false;
    // Fitting layouts differ in the order of northing and easting and nothing told them apart.
    bool northingEastingOpen = false;
    WString note; // what told the orders apart, or that nothing did
    std::uint64_t firstLine = 0; // the number of the first line tried; 0 without lines
};

// The rejected candidates worth naming one by one: those whose delimiter occurs in the first
// line (or that had no lines). The rest fail only for want of their delimiter, and
// UnusedDelimitersNote sums them up in one sentence.
std::vector<const DetectCandidate*> RejectionsToName(const DetectResult& result);
// "Not tried further with blank, tab: line 1 has none of them." for the delimiters of the
// rejected candidates that RejectionsToName leaves out; empty when there are none.
WString UnusedDelimitersNote(const DetectResult& result);

// Tries every preset with every delimiter on the lines. areaOfUse may be empty.
DetectResult DetectPresets(const std::vector<DetectLine>& lines, const std::vector<SurveyPreset>& presets,
                           const AreaOfUseTest& areaOfUse = {});

// Whether the first count fields of a line can name count columns: all there, none empty,
// none twice.
bool UsableAsNames(const FieldList& names, std::size_t count);

// The preset as a user choosing it by name gets it: with the first of its delimiters that fits
// every line (names line included); else, not fitting, with the first that cuts every line into
// its columns (a value that does not convert is then the import's to report), else with the
// first of all. The reason says why it does not fit with that delimiter.
DetectCandidate CandidateOfPreset(const std::vector<DetectLine>& lines, const SurveyPreset& preset);

// Fills the configuration with the candidate: the preset applied with its delimiter, the
// column names and the header lines found.
void ApplyCandidate(const DetectCandidate& candidate, ImportTxtConfiguration& configuration);
