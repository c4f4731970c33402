#pragma once
// The test program's own dialog template (ShimTestDialogs.rc): none of the reference host's
// libraries carries one with this number.

#define SHIM_TEST_DIALOG 9001
#define SHIM_TEST_EDIT 1000
#define SHIM_TEST_ICON_BUTTON 1001
