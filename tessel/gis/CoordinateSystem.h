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
    // What FlatGeobuf's header keeps of it: the authority and its code (empty and 0 when it
    // has none), its name and its WKT (2019 form).
    const std::string& AuthorityName() const { return authorityName_; }
    int AuthorityCode() const { return authorityCode_; }
    const std::string& Name() const { return name_; }
    const std::string& Wkt() const { return wkt_; }

private:
    CoordinateSystem() = default;
    std::shared_ptr<OGRSpatialReference> reference_;
    std::string epsgUrn_;
    std::string text_;
    std::string authorityName_;
    int authorityCode_ = 0;
    std::string name_;
    std::string wkt_;
};

} // namespace tessel
