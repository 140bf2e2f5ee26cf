#include "Classification/private/modelFile.h"

#include <Moxelcore/Core/Exception.h>

#include <boost/archive/binary_oarchive.hpp>
#include <boost/archive/text_oarchive.hpp>
#include <boost/archive/xml_oarchive.hpp>
#include <boost/filesystem/path.hpp>

#include <algorithm>
#include <cctype>
#include <locale>
#include <sstream>

#include "Classification/private/modelSerialization.h"
#include "Core/private/Serialization/CheckedArchive.h"
#include "Core/private/Serialization/MagicNumberObjectFile.h"
#include "Segmentation/private/TextureFeatures.h"

namespace mox::classification::modelFile {

namespace {

using serialization::ArchiveSource;

constexpr char const* source = "Classification/src/TextureClassificationModel";
constexpr char const* objectName = "TextureClassificationModel";

std::unique_ptr<ArchiveSource> openBinaryFile(std::string_view bytes)
{
    serialization::MagicNumberObjectFile::read(bytes);
    auto archive = serialization::openBinaryArchive(bytes);
    std::string const name = archive->text();
    if (name != objectName) {
        helper::raise<SerializationException>(source, "The <", name.c_str(), "> classifier isn't supported.");
    }
    return archive;
}

std::unique_ptr<ArchiveSource> openArchive(String const& path, std::string_view bytes)
{
    std::string extension = boost::filesystem::path(path.c_str()).extension().string();
    for (char& c : extension) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return extension == ".xml"   ? serialization::openXmlArchive(bytes)
           : extension == ".txt" ? serialization::openTextArchive(bytes)
                                 : openBinaryFile(bytes);
}

bool isValid(TextureClassificationModelPrivate const& model)
{
    constexpr std::size_t numOfUserQuantiles = 6;
    if (model.radius == 0 || !(model.binSizeCooccurrence > 0) || !(model.binSizeHistogram > 0) ||
        model.userQuantileRatioHistogram.size() != numOfUserQuantiles) {
        return false;
    }
    EnumInfo const& known = getEnumInfo<segmentation::TextureFeatureTypes>();
    auto const& group = model.textureFeaturesGroup;
    if (!std::all_of(group.begin(), group.end(), [&](auto type) { return known.exists(type); })) {
        return false;
    }
    auto const features = segmentation::expandFeatures(group, model.directionCollection.size());
    return model.classifier->restore(static_cast<int>(features.size()), static_cast<int>(model.numOfClasses));
}

} // namespace

std::string compose(TextureClassificationModelPrivate const& model, WriteMode mode)
{
    std::ostringstream out;
    out.imbue(std::locale::classic());
    if (mode == WRITE_MODE_BINARY) {
        serialization::MagicNumberObjectFile::write(out);
        boost::archive::binary_oarchive archive(out);
        archive << std::string(objectName) << model;
    } else if (mode == WRITE_MODE_TEXT) {
        boost::archive::text_oarchive archive(out);
        archive << model;
    } else {
        boost::archive::xml_oarchive archive(out);
        archive << boost::serialization::make_nvp(objectName, model);
    }
    return out.str();
}

std::unique_ptr<TextureClassificationModelPrivate> parse(String const& path, std::string_view bytes)
{
    auto const archiveSource = openArchive(path, bytes);
    serialization::CheckedArchive archive(*archiveSource);
    auto model = std::make_unique<TextureClassificationModelPrivate>();
    archive& boost::serialization::make_nvp(objectName, *model);
    archiveSource->finish();
    if (!isValid(*model)) {
        helper::raise<SerializationException>(source, "The <", path, "> file holds no valid model.");
    }
    return model;
}

} // namespace mox::classification::modelFile
