#include "import/ImportTxtConfiguration.h"

#include "host/WideText.h"
#include "xml/ConfigValueCodec.h"
#include "xml/XmlDocument.h"

#include <algorithm>

namespace {

// Stands for a double quote inside encoded text.
constexpr WChar kQuoteStandIn = 0x00D7; // "×"

const WChar kCfgFormat[] =
    WTEXT("<?xml version=\"1.0\" encoding=\"utf-8\"?><cfg txtFile=\"%s\" delimiter=\"%s\" comments=\"%s\" ")
    WTEXT("mode=\"%d\" colPositions=\"%s\"%s>%s</cfg>");
const WChar kHeaderLinesFormat[] = WTEXT(" headerLines=\"%d\"");
const WChar kColFormat[] = WTEXT("<col no=\"%d\" name=\"%s\" type=\"%d\" onOff=\"%d\"/>");

void QuotesToStandIn(WString& text) { std::replace(text.begin(), text.end(), WTEXT('"'), kQuoteStandIn); }
void StandInToQuotes(WString& text) { std::replace(text.begin(), text.end(), kQuoteStandIn, WTEXT('"')); }

WString EncodeText(WString value)
{
    QuotesToStandIn(value);
    return EncodeConfigValue(value);
}

WString DecodedAttribute(const XmlDocument& document, const WChar* name)
{
    return DecodeConfigValue(document.GetAttribute(name));
}

int NumberAttribute(const XmlDocument& document, const WChar* name)
{
    return WideToInt(document.GetAttribute(name));
}

// "12¤25¤40¤" gives 12, 25, 40; empty pieces are dropped.
PositionList ReadPositions(const WString& text)
{
    FieldList pieces;
    SplitByDelimiter(text, pieces, kFieldSeparator, 0);
    PositionList positions;
    positions.reserve(pieces.size());
    for (const WString& piece : pieces)
        positions.push_back(static_cast<std::uint32_t>(WideToInt(piece)));
    return positions;
}

WString WritePositions(const PositionList& positions)
{
    WString text;
    for (const std::uint32_t position : positions) {
        // Written with "%d": a position beyond the int range reads back as it was written.
        text += IntToWide(static_cast<std::int32_t>(position));
        text += kFieldSeparator;
    }
    return text;
}

DelimiterList ReadDelimiters(const WString& text)
{
    DelimiterList delimiters;
    delimiters.reserve(text.size());
    for (const WChar c : text)
        delimiters.emplace_back(1, c == kQuoteStandIn ? WTEXT('"') : c);
    return delimiters;
}

boost::shared_ptr<CColumnData> ReadColumn(const XmlDocument& document)
{
    auto column = boost::shared_ptr<CColumnData>(new CColumnData);
    column->SetNo(NumberAttribute(document, WTEXT("no")));
    // Deliberately left with "×" where the name had a double quote.
    column->SetName(DecodedAttribute(document, WTEXT("name")));
    column->SetType(NumberAttribute(document, WTEXT("type")));
    column->SetOnOff(NumberAttribute(document, WTEXT("onOff")));
    return column;
}

WString WriteColumn(const CColumnData& column)
{
    return FormatWide(kColFormat, {column.GetNo(), EncodeText(column.GetName()), column.GetType(), column.GetOnOff()});
}

} // namespace

unsigned ImportValueChanges(ImportValue value, const WString& text, unsigned codePage)
{
    WString stored = text;
    QuotesToStandIn(stored);
    unsigned changes = ConfigValueFitsCodePage(stored, codePage) ? 0 : ImportValueChange::OutsideCodePage;
    if (value == ImportValue::ColumnName) {
        if (text.find(WTEXT('"')) != WString::npos)
            changes |= ImportValueChange::QuoteReadAsSign;
    } else if (text.find(kQuoteStandIn) != WString::npos) {
        changes |= ImportValueChange::SignReadAsQuote;
    }
    return changes;
}

void ImportTxtConfiguration::Clear()
{
    txtFile_.clear();
    delimiters_.clear();
    comments_.clear();
    positions_.clear();
    columns_.clear();
}

int ImportTxtConfiguration::Parse(const WChar* xml)
{
    WString text = xml ? WString(xml) : WString();
    StandInToQuotes(text);
    XmlDocument document;
    document.SetText(text);
    if (!document.FindElement(WTEXT("cfg")))
        return 0;

    columns_.clear();
    txtFile_ = DecodedAttribute(document, WTEXT("txtFile"));
    delimiters_ = ReadDelimiters(DecodedAttribute(document, WTEXT("delimiter")));
    comments_ = DecodedAttribute(document, WTEXT("comments"));
    StandInToQuotes(comments_);
    StandInToQuotes(txtFile_);
    mode_ = NumberAttribute(document, WTEXT("mode"));
    positions_ = ReadPositions(document.GetAttribute(WTEXT("colPositions")));
    headerLines_ = std::max(0, NumberAttribute(document, WTEXT("headerLines")));

    document.EnterElement();
    while (document.FindElement(WTEXT("col")))
        columns_.push_back(ReadColumn(document));
    return 1;
}

WString ImportTxtConfiguration::ToXml()
{
    WString columns;
    for (const auto& column : columns_)
        if (column) // an empty slot has nothing to write
            columns += WriteColumn(*column);
    WString delimiters;
    for (const WString& delimiter : delimiters_)
        delimiters += delimiter;

    // The record's own path keeps the stand-in: writing changes it, deliberately.
    QuotesToStandIn(txtFile_);
    const WString headerLines = headerLines_ > 0 ? FormatWide(kHeaderLinesFormat, {headerLines_}) : WString();
    return FormatWide(kCfgFormat, {EncodeConfigValue(txtFile_), EncodeText(delimiters), EncodeText(comments_),
                                   mode_, WritePositions(positions_), headerLines, columns});
}
