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
    document.SetText(WTEXT("<cfg v=\"") + EncodeConfigValue(value) + WTEXT("\"/>"));
    if (!document.FindElement(WTEXT("cfg")))
        return WTEXT("(no cfg)");
    return DecodeConfigValue(document.GetAttribute(WTEXT("v")));
}

struct CodecCase {
    const WChar* value;
    const WChar* encoded;
};

TEST_F(ConfigValueCodec, EncodesToFixedByteForms)
{
    const CodecCase cases[] = {
        {WTEXT(""), WTEXT("")},
        {WTEXT("x=y"), WTEXT("x=3Dy")},
        {WTEXT("\u00e9"), WTEXT("=EF=BF=A9")},            // 0xE9
        {WTEXT("\u20ac"), WTEXT("=EF=BE=80")},            // 0x80
        {WTEXT("\u00bf"), WTEXT("=EF=BE=BF")},            // 0xBF
        {WTEXT("\u00c0"), WTEXT("=EF=BF=80")},            // 0xC0
        {WTEXT("\u00ff"), WTEXT("=EF=BF=BF")},            // 0xFF
        {WTEXT("\u00d7"), WTEXT("=EF=BF=97")},            // the multiplication sign
        {WTEXT("\u00a4"), WTEXT("=EF=BE=A4")},            // the internal field separator
        {WTEXT("a & b"), WTEXT("a &amp; b")},
        {WTEXT("&lt;"), WTEXT("&lt;")},
        {WTEXT("<\">'"), WTEXT("&lt;&quot;&gt;&apos;")},
        {WTEXT("C:\\Data\\p 1.txt"), WTEXT("C:\\Data\\p 1.txt")},
        {WTEXT("\t;,"), WTEXT("\t;,")},
        {WTEXT("\u0416"), WTEXT("?")}, // not in the code page
    };
    for (const CodecCase& c : cases)
        EXPECT_EQ(EncodeConfigValue(c.value), WString(c.encoded)) << ::testing::PrintToString(WString(c.value));
}

TEST_F(ConfigValueCodec, DecodesTheGroupsAndDropsWhatIsCutShort)
{
    const CodecCase cases[] = {
        // {decoded, as GetAttribute returned it}
        {WTEXT("x=y"), WTEXT("x=3Dy")},
        {WTEXT("\u00e9"), WTEXT("=EF=BF=A9")},
        {WTEXT("a & b"), WTEXT("a &amp; b")},
        {WTEXT("<"), WTEXT("&lt;")},
        {WTEXT("A~"), WTEXT("=41=7e")},
        {WTEXT("abc"), WTEXT("abc=")},
        {WTEXT("abc"), WTEXT("abc=4")},
        {WTEXT("a"), WTEXT("a=EF=BF")},
        {WTEXT(""), WTEXT("=E9")},               // a lone three-group lead too near the end
        {WTEXT("a=zz"), WTEXT("a=zz")},          // no group: an ordinary '='
        {WTEXT("=EF=ZZ\u00a9"), WTEXT("=EF=ZZ=A9")},
        {WTEXT("\u00e9"), WTEXT("=C3=A9")},      // a two-group sequence
        {WTEXT("\u00a9"), WTEXT("=A9")},         // a lead that starts no sequence is the byte itself
        {WTEXT("\u00e9"), WTEXT("\u00e9")},      // a character other than '=' is one byte
    };
    for (const CodecCase& c : cases)
        EXPECT_EQ(DecodeConfigValue(c.encoded), WString(c.value)) << ::testing::PrintToString(WString(c.encoded));
}

TEST_F(ConfigValueCodec, ThreeGroupsGiveXMinusTwoTimes64PlusYModulo256)
{
    // Groups the encoder never writes still follow the rule.
    EXPECT_EQ(DecodeConfigValue(WTEXT("=E0=80=41=41")), WTEXT("\u00c1A"));   // (0x7E * 64 + 0x41) % 256 = 0xC1
    EXPECT_EQ(DecodeConfigValue(WTEXT("=EF=82=FF")), WTEXT("\u00ff"));        // (0x80 * 64 + 0xFF) % 256 = 0xFF
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
    EXPECT_EQ(EncodeConfigValue(WTEXT("\u0142")), WTEXT("=EF=BE=B3")); // 0xB3 in Windows-1250
    EXPECT_EQ(ReadBack(WTEXT("\u0142\u00e9\u0148")), WTEXT("\u0142\u00e9\u0148"));
}

TEST_F(ConfigValueCodec, AValueTypedAsAReferenceReadsBackUnescapedTwice)
{
    const struct {
        const WChar* typed;
        const WChar* readBack;
    } cases[] = {
        {WTEXT("&lt;"), WTEXT("<")},
        {WTEXT("a & b"), WTEXT("a & b")},
        {WTEXT("x=y \u00e9"), WTEXT("x=y \u00e9")},
        {WTEXT("\"q\" <t>"), WTEXT("\"q\" <t>")},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ReadBack(c.typed), WString(c.readBack)) << ::testing::PrintToString(WString(c.typed));
}

} // namespace
