#pragma once
// What a character ruler holds and computes, apart from the toolkit: its settings, the
// column breaks it carries, the ruler position under a point and where each tick and break
// is drawn. CRulerWnd draws it; the import wizard decides where breaks go.
//
// Breaks are found and removed by the identifier their caller gave them, never by slot:
// removing one closes the gap in the slots, and the other identifiers stay as they were.

#include "textfile/FieldSplit.h"

#include <cstdint>
#include <memory>
#include <vector>

using RulerColour = std::uint32_t; // 0x00BBGGRR, as the CAD application's colours

// One column break. Besides the position, identifier and colour the record carries values
// for its caller that the ruler keeps but does not use.
struct RulerBreak {
    std::int32_t position = 0;
    std::int32_t callerValue1 = 0;
    std::int32_t id = 0;
    std::int32_t callerValue2 = 0;
    RulerColour colour = 0;
    std::int32_t callerValue3 = 0;
    std::uint32_t limit = 0;
    std::intptr_t userValue = 0;
};

enum RulerStyle : std::uint32_t {
    RulerVertical = 1,   // positions run along y
    RulerHorizontal = 2, // positions run along x
    RulerTicksNear = 4,  // ticks hang from the top (left) edge
    RulerTicksFar = 8,   // ticks stand on the bottom (right) edge
};

enum class RulerTick { Short, Medium, Long };

class RulerModel {
public:
    // Setters answer 1, as the window's setters do.
    int SetStyle(std::uint32_t style) { return Set(style_, style); }
    int SetBackgroundColour(RulerColour colour) { return Set(background_, colour); }
    int SetTickColour(RulerColour colour) { return Set(tick_, colour); }
    // The colour of the labels and of the keyboard cursor.
    int SetThirdColour(RulerColour colour) { return Set(third_, colour); }
    int SetOrigin(int pixels) { return Set(origin_, pixels); }
    int SetLargestPosition(int position) { return Set(largest_, position); }
    int SetCellWidth(int pixels) { return Set(cellWidth_, pixels); }
    int SetMarkerHalfWidth(int pixels) { return Set(markerHalfWidth_, pixels); }
    int SetScrollOffset(int pixels) { return Set(scroll_, pixels); }

    std::uint32_t Style() const { return style_; }
    bool IsVertical() const { return (style_ & RulerVertical) != 0; }
    RulerColour BackgroundColour() const { return background_; }
    RulerColour TickColour() const { return tick_; }
    RulerColour ThirdColour() const { return third_; }
    int LargestPosition() const { return largest_; }
    int MarkerHalfWidth() const { return markerHalfWidth_; }

    // The ruler position under the point (x for a horizontal ruler, y for a vertical one):
    // (p - 7) / cell width rounded half up, where p = coordinate - origin + scroll offset;
    // -1 when that is below 0 or beyond the largest position (or the cell width is not
    // positive).
    int PositionAt(int x, int y) const;
    // Where position is drawn along the ruler, in client pixels.
    int PixelOf(int position) const { return cellWidth_ * position - scroll_ + origin_; }
    // The tick of a scale position: long (and labelled) every 10th, medium every 5th.
    static RulerTick TickOf(int position);
    // True when a marker at pixel lies within the client extent widened by the marker
    // half-width on both sides.
    bool MarkerVisible(int pixel, int clientExtent) const;

    // Appends a break and returns its slot, or -1 when it cannot be allocated.
    int AddBreak(const RulerBreak& record);
    // The first break with the identifier, or null.
    const RulerBreak* FindBreak(std::int32_t id) const;
    // Deletes the break with the identifier; later breaks move down one slot. Returns the
    // slot it had, or -1 (and changes nothing) when no break has that identifier.
    int RemoveBreak(std::int32_t id);
    void RemoveAllBreaks() { breaks_.clear(); }
    int BreakCount() const { return static_cast<int>(breaks_.size()); }
    const RulerBreak& BreakInSlot(int slot) const { return *breaks_[static_cast<std::size_t>(slot)]; }
    // The positions of all breaks, ascending, each value once; negative positions are left
    // out, as no column begins there.
    PositionList BreakPositions() const;

    // The keyboard cursor: a break position, drawn where a break there is drawn; -1 when
    // there is none.
    int Cursor() const { return cursor_; }
    // Moves the cursor by delta (to 0 when there was none), kept within 0 and the largest
    // position.
    void MoveCursor(int delta);

private:
    template <class T>
    static int Set(T& field, T value)
    {
        field = value;
        return 1;
    }

    std::uint32_t style_ = RulerHorizontal | RulerTicksFar;
    RulerColour background_ = 0xFFFFFF;
    RulerColour tick_ = 0;
    RulerColour third_ = 0;
    int origin_ = 0;
    int largest_ = 100;
    int cellWidth_ = 4;
    int markerHalfWidth_ = 6;
    int scroll_ = 0;
    int cursor_ = -1;
    std::vector<std::unique_ptr<RulerBreak>> breaks_;
};
