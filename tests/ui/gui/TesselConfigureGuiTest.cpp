// tessel as the CAD host: 'tessel configure export' opens the module's dialog in a real
// window, and the user's OK (Enter) writes the configuration made.

#include "DialogDriving.h"

#include "export/CXMLTextFileExportConfiguration.h"
#include "refhost/testing/TempDir.h"

#include <gtest/gtest.h>
#include <wx/utils.h>

#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <iterator>
#include <string>

extern char** environ;

namespace {

// The top-level window with that title, or 0.
Window FindTitled(Display* display, Window under, const std::string& title)
{
    Window root = 0, parent = 0, *children = nullptr;
    unsigned count = 0;
    if (!XQueryTree(display, under, &root, &parent, &children, &count))
        return 0;
    Window found = 0;
    for (unsigned i = 0; i < count && !found; ++i) {
        char* name = nullptr;
        if (XFetchName(display, children[i], &name) && name) {
            if (title == name)
                found = children[i];
            XFree(name);
        }
        if (!found)
            found = FindTitled(display, children[i], title);
    }
    if (children)
        XFree(children);
    return found;
}

std::string ReadAll(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
}

// Runs 'tessel configure' with the arguments, answers the dialog of that title with one key,
// and returns tessel's exit status.
int ConfigureWithKey(const std::vector<std::string>& arguments, const std::string& title, KeySym key)
{
    std::vector<std::string> words = {TESSEL_BINARY, "--module", TESSEL_MODULE_PATH, "configure"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (std::string& word : words)
        argv.push_back(word.data());
    argv.push_back(nullptr);
    pid_t child = 0;
    if (posix_spawn(&child, TESSEL_BINARY, nullptr, nullptr, argv.data(), environ) != 0)
        return -1;
    Display* display = XOpenDisplay(nullptr);
    Window dialog = 0;
    PumpUntil([&] { return (dialog = FindTitled(display, DefaultRootWindow(display), title)); }, 15000);
    EXPECT_NE(dialog, 0u) << "tessel showed no dialog titled " << title;
    if (dialog) {
        wxMilliSleep(500);
        XSetInputFocus(display, dialog, RevertToParent, CurrentTime);
        XTestFakeKeyEvent(display, XKeysymToKeycode(display, key), True, CurrentTime);
        XTestFakeKeyEvent(display, XKeysymToKeycode(display, key), False, CurrentTime);
        XFlush(display);
    }
    XCloseDisplay(display);
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

} // namespace

TEST(TesselConfigure, ExportDialogOpensAndOkWritesTheConfigurationAndEscWritesNothing)
{
    refhost::testing::TempDir folder;
    const std::string start = folder.Path() + "/start.xml";
    {
        CXMLTextFileExportConfiguration configuration;
        configuration.SetTxtFile(WTEXT("/survey/out.txt"));
        configuration.SetDelimiter(WTEXT(";"));
        const WString text = configuration.ToXml();
        std::ofstream(start) << std::string(text.begin(), text.end());
    }
    const std::string cancelled = folder.Path() + "/cancelled.xml";
    const std::string title = "Text file export settings";
    EXPECT_EQ(ConfigureWithKey({"export", "--config", start, "-o", cancelled}, title, XK_Escape), 1);
    EXPECT_FALSE(std::ifstream(cancelled).good());

    const std::string made = folder.Path() + "/made.xml";
    EXPECT_EQ(ConfigureWithKey({"export", "--config", start, "-o", made}, title, XK_Return), 0);
    CXMLTextFileExportConfiguration configuration;
    const std::string text = ReadAll(made);
    configuration.FromXml(WString(text.begin(), text.end()));
    EXPECT_EQ(configuration.GetTxtFile(), WTEXT("/survey/out.txt"));
    EXPECT_EQ(configuration.GetDelimiter(), WTEXT(";"));
}

TEST(TesselConfigure, ImportWizardOpensOnTheFileAndEscWritesNothing)
{
    refhost::testing::TempDir folder;
    const std::string output = folder.Path() + "/cancelled.xml";
    EXPECT_EQ(ConfigureWithKey({"import", TESSEL_SOURCE_DIR "/samples/survey-points.txt", "-o", output},
                               "Text file import", XK_Escape),
              1);
    EXPECT_FALSE(std::ifstream(output).good());
}
