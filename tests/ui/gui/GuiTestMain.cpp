// The GUI tests need a display: without one they skip, saying so (exit code 77). A failed
// check ends every dialog still open, so that the failure shows at once.

#include "OpenDialogs.h"

#include "../scenarios/EndDialogsOnFailure.h"
#include "refhost/CadShimDialogs.h"

#include <gtest/gtest.h>

#include <cstdio>

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    CadShim::AllowDialogs(true);
    if (!CadShim::StartDialogs()) {
        std::fprintf(stderr, "GUI tests skipped: no display (run them under xvfb-run)\n");
        return 77;
    }
    TrackOpenDialogs();
    ::testing::UnitTest::GetInstance()->listeners().Append(new EndDialogsOnFailure(EndOpenDialogs));
    return RUN_ALL_TESTS();
}
