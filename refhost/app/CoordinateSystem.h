#pragma once
// A coordinate system the user names with --crs, read by GDAL: an EPSG code ("EPSG:25833"),
// WKT or a PROJ string, whatever GDAL's SetFromUserInput accepts.

#include <memory>
#include <string>

class OGRSpatialReference;

namespace tessel {

class CoordinateSystem {
public:
    // Throws a usage AppError "--crs 'TEXT': not a coordinate system GDAL knows (REASON)".
    static std::shared_ptr<const CoordinateSystem> Parse(const std::string& text);

    const OGRSpatialReference& Reference() const { return *reference_; }
    // The OGC URN of an EPSG coordinate system ("urn:ogc:def:crs:EPSG::25833"), as GeoJSON's
    // named crs member carries it; empty when GDAL finds no EPSG code for it.
    const std::string& EpsgUrn() const { return epsgUrn_; }
    const std::string& Text() const { return text_; }

private:
    CoordinateSystem() = default;
    std::shared_ptr<OGRSpatialReference> reference_;
    std::string epsgUrn_;
    std::string text_;
};

} // namespace tessel
