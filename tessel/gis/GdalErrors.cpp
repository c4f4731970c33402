#include "tessel/gis/GdalErrors.h"

#include <cpl_error.h>

#include <iostream>

namespace tessel {
namespace {

void CPL_STDCALL Capture(CPLErr level, CPLErrorNum, const char* message)
{
    auto* capture = static_cast<std::string*>(CPLGetErrorHandlerUserData());
    const std::string text = message ? message : "";
    if (level >= CE_Failure) {
        if (capture)
            *capture = text;
    } else if (level == CE_Warning) {
        std::cerr << "tessel: warning: " << text << std::endl;
    }
}

} // namespace

GdalErrorCapture::GdalErrorCapture() { CPLPushErrorHandlerEx(Capture, &lastError_); }

GdalErrorCapture::~GdalErrorCapture() { CPLPopErrorHandler(); }

std::string GdalErrorCapture::Reason() const { return lastError_.empty() ? std::string() : " (" + lastError_ + ")"; }

} // namespace tessel
