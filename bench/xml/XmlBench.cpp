// Times what every engine operation pays for its configuration: parsing the import
// configuration string and writing it back, at a typical size (50 columns) and a large one
// (10,000 columns), and the raw SetText throughput on a 10 MB document.
//   bench-xml [repetitions scale, default 1]

#include "import/ImportTxtConfiguration.h"
#include "host/WideText.h"
#include "xml/XmlDocument.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace {

using Clock = std::chrono::steady_clock;

// Best of several rounds of `repetitions` calls, in microseconds per call.
template <typename Work>
double MicrosecondsPerCall(int repetitions, Work work)
{
    double best = 1e300;
    for (int round = 0; round < 5; ++round) {
        const auto start = Clock::now();
        for (int i = 0; i < repetitions; ++i)
            work();
        const std::chrono::duration<double, std::micro> elapsed = Clock::now() - start;
        best = std::min(best, elapsed.count() / repetitions);
    }
    return best;
}

ImportTxtConfiguration MakeConfiguration(int columns)
{
    ImportTxtConfiguration configuration;
    configuration.SetTxtFile(WTEXT("C:\\Vermessung\\Projekt M\u00fcller & S\u00f6hne\\Punkte \"alt\".txt"));
    configuration.SetDelimiters({WTEXT("\t"), WTEXT(";")});
    configuration.SetComments(WTEXT("#*"));
    configuration.SetMode(0);
    configuration.GetPositions() = {12, 25, 40, 55};
    for (int i = 0; i < columns; ++i) {
        auto column = boost::shared_ptr<CColumnData>(new CColumnData);
        column->SetNo(i);
        column->SetName(WTEXT("Spalte_") + IntToWide(i));
        column->SetType(i % 3 == 0 ? kColumnText : kColumnReal);
        column->SetOnOff(1);
        configuration.GetColumns().push_back(column);
    }
    return configuration;
}

void BenchConfiguration(int columns, int repetitions)
{
    ImportTxtConfiguration source = MakeConfiguration(columns);
    const WString xml = source.ToXml();
    volatile std::size_t sink = 0;
    const double parse = MicrosecondsPerCall(repetitions, [&] {
        ImportTxtConfiguration configuration;
        configuration.Parse(xml.c_str());
        sink = sink + configuration.GetColumns().size();
    });
    ImportTxtConfiguration parsed;
    parsed.Parse(xml.c_str());
    const double write = MicrosecondsPerCall(repetitions, [&] { sink = sink + parsed.ToXml().size(); });
    std::printf("import configuration, %5d columns (%7zu chars): parse %9.1f us, write %9.1f us, round trip %9.1f us\n",
                columns, xml.size(), parse, write, parse + write);
}

// About 10 MB of UTF-16 text: nested records with attributes, text and comments.
WString MakeLargeDocument()
{
    WString text = WTEXT("<?xml version=\"1.0\"?><survey>");
    for (int i = 0; text.size() * sizeof(WChar) < 10u * 1000 * 1000; ++i) {
        text += WTEXT("<point no=\"") + IntToWide(i) + WTEXT("\" name=\"P") + IntToWide(i) +
                WTEXT("\" x=\"4512345.678\" y=\"5412345.678\"><code>BM &amp; 12</code><!-- checked --></point>\n");
    }
    text += WTEXT("</survey>");
    return text;
}

} // namespace

int main(int argc, char** argv)
{
    const int scale = argc > 1 ? std::max(1, std::atoi(argv[1])) : 1;
    BenchConfiguration(50, 2000 * scale);
    BenchConfiguration(10000, 10 * scale);

    const WString document = MakeLargeDocument();
    XmlDocument xml;
    const double seconds = MicrosecondsPerCall(3 * scale, [&] { xml.SetText(document); }) / 1e6;
    const double megabytes = static_cast<double>(document.size() * sizeof(WChar)) / 1e6;
    std::printf("SetText on %.1f MB (%zu chars, well formed: %s): %.1f ms, %.0f MB/s\n", megabytes, document.size(),
                xml.SetText(document) ? "yes" : "no", seconds * 1e3, megabytes / seconds);
    return 0;
}
