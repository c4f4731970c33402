#pragma once
// GDAL's messages inside tessel: while a capture is alive, GDAL's errors are kept for the
// one line tessel prints and its warnings go to standard error as "tessel: warning: ...",
// instead of GDAL's own "ERROR 1: ..." lines.

#include <string>

namespace tessel {

class GdalErrorCapture {
public:
    GdalErrorCapture();
    ~GdalErrorCapture();
    GdalErrorCapture(const GdalErrorCapture&) = delete;
    GdalErrorCapture& operator=(const GdalErrorCapture&) = delete;

    // " (MESSAGE)" of the last error GDAL reported since the capture began, or "".
    std::string Reason() const;

private:
    std::string lastError_;
};

} // namespace tessel
