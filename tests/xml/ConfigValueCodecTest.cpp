#include "xml/ConfigValueCodec.h"

#include "tests/xml/Windows1252Test.h"
#include "platform/Platform.h"
#include "xml/XmlDocument.h"

#include <gtest/gtest.h>

namespace {

// Byte forms below are those of Windows-1252.
class ConfigValueCodec : public Windows1252Test {};

// What a configuration reader gets back for a value its writer encoded.
WString ReadBack(const WString& value)
{
    XmlDocument document;
    document.SetText(u"<cfg v=\"" + EncodeConfigValue(value) + u"\"/>");
    if (!document.FindElement(u"cfg"))
        return u"(no cfg)";
    return DecodeConfigValue(document.GetAttribute(u"v"));
}

struct CodecCase {
    const char16_t* value;
    const char16_t* encoded;
};

TEST_F(ConfigValueCodec, EncodesToFixedByteForms)
{
    const CodecCase cases[] = {
        {u"", u""},
        {u"x=y", u"x=3Dy"},
        {u"\u00e9", u"=EF=BF=A9"},            // 0xE9
        {u"\u20ac", u"=EF=BE=80"},            // 0x80
        {u"\u00bf", u"=EF=BE=BF"},            // 0xBF
        {u"\u00c0", u"=EF=BF=80"},            // 0xC0
        {u"\u00ff", u"=EF=BF=BF"},            // 0xFF
        {u"\u00d7", u"=EF=BF=97"},            // the multiplication sign
        {u"\u00a4", u"=EF=BE=A4"},            // the internal field separator
        {u"a & b", u"a &amp; b"},
        {u"&lt;", u"&lt;"},
        {u"<\">'", u"&lt;&quot;&gt;&apos;"},
        {u"C:\\Data\\p 1.txt", u"C:\\Data\\p 1.txt"},
        {u"\t;,", u"\t;,"},
        {u"\u0416", u"?"}, // not in the code page
    };
    for (const CodecCase& c : cases)
        EXPECT_EQ(EncodeConfigValue(c.value), WString(c.encoded)) << ::testing::PrintToString(WString(c.value));
}

TEST_F(ConfigValueCodec, DecodesTheGroupsAndDropsWhatIsCutShort)
{
    const CodecCase cases[] = {
        // {decoded, as GetAttribute returned it}
        {u"x=y", u"x=3Dy"},
        {u"\u00e9", u"=EF=BF=A9"},
        {u"a & b", u"a &amp; b"},
        {u"<", u"&lt;"},
        {u"A~", u"=41=7e"},
        {u"abc", u"abc="},
        {u"abc", u"abc=4"},
        {u"a", u"a=EF=BF"},
        {u"", u"=E9"},               // a lone three-group lead too near the end
        {u"a=zz", u"a=zz"},          // no group: an ordinary '='
        {u"=EF=ZZ\u00a9", u"=EF=ZZ=A9"},
        {u"\u00e9", u"=C3=A9"},      // a two-group sequence
        {u"\u00a9", u"=A9"},         // a lead that starts no sequence is the byte itself
        {u"\u00e9", u"\u00e9"},      // a character other than '=' is one byte
    };
    for (const CodecCase& c : cases)
        EXPECT_EQ(DecodeConfigValue(c.encoded), WString(c.value)) << ::testing::PrintToString(WString(c.encoded));
}

TEST_F(ConfigValueCodec, ThreeGroupsGiveXMinusTwoTimes64PlusYModulo256)
{
    // Groups the encoder never writes still follow the rule.
    EXPECT_EQ(DecodeConfigValue(u"=E0=80=41=41"), u"\u00c1A");   // (0x7E * 64 + 0x41) % 256 = 0xC1
    EXPECT_EQ(DecodeConfigValue(u"=EF=82=FF"), u"\u00ff");        // (0x80 * 64 + 0xFF) % 256 = 0xFF
}

TEST_F(ConfigValueCodec, EveryCodePageCharacterSurvivesARoundTrip)
{
    WString all;
    for (int byte = 1; byte < 256; ++byte) {
        const char b = static_cast<char>(byte);
        WChar unit = 0;
        ASSERT_EQ(Platform::MultiByteToWide(0, &b, 1, &unit, 1), 1);
        all += unit;
    }
    EXPECT_EQ(ReadBack(all), all);
}

TEST(ConfigValueCodecCodePage, BytesFollowTheSystemCodePage)
{
    const AnsiCodePageScope centralEurope(1250);
    EXPECT_EQ(EncodeConfigValue(u"\u0142"), u"=EF=BE=B3"); // 0xB3 in Windows-1250
    EXPECT_EQ(ReadBack(u"\u0142\u00e9\u0148"), u"\u0142\u00e9\u0148");
}

TEST_F(ConfigValueCodec, AValueTypedAsAReferenceReadsBackUnescapedTwice)
{
    const struct {
        const char16_t* typed;
        const char16_t* readBack;
    } cases[] = {
        {u"&lt;", u"<"},
        {u"a & b", u"a & b"},
        {u"x=y \u00e9", u"x=y \u00e9"},
        {u"\"q\" <t>", u"\"q\" <t>"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ReadBack(c.typed), WString(c.readBack)) << ::testing::PrintToString(WString(c.typed));
}

} // namespace
