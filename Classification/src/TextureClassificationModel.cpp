#include <Moxelcore/Classification/TextureClassificationModel.h>

#include <boost/filesystem/operations.hpp>

#include <fstream>
#include <iterator>
#include <locale>
#include <sstream>
#include <utility>

#include "Classification/private/modelFile.h"
#include "Core/private/Helper/raise.h"
#include "Core/private/PropertyDefinitions.h"

namespace mox {

template class Property<classification::TextureClassificationModel**>;
template class Property<classification::TextureClassificationModel*>;
template class Property<classification::TextureClassificationModel const*>;

namespace classification {

namespace {

namespace fs = boost::filesystem;

constexpr char const* source = "Classification/src/TextureClassificationModel";
constexpr boost::uintmax_t largestFile = boost::uintmax_t{1} << 30U;

template <class... Part>
[[noreturn]] void refuse(Part const&... message)
{
    helper::raise<SerializationException>(source, message...);
}

bool exists(String const& path)
{
    boost::system::error_code error;
    return fs::exists(fs::status(path.c_str(), error));
}

std::string bytesOf(String const& path)
{
    boost::system::error_code error;
    boost::uintmax_t const size = fs::file_size(path.c_str(), error); // an error for what is no regular file
    std::ifstream file(path.c_str(), std::ios::binary);
    if (error || !file) {
        refuse("Cannot open the <", path, "> file.");
    }
    if (size > largestFile) {
        refuse("The <", path, "> file is too large for a classification model.");
    }
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Lines of names and values.
class Listing {
public:
    Listing() { out_.imbue(std::locale::classic()); }

    template <class T>
    void value(char const* name, T const& value)
    {
        out_ << name << ": " << value << '\n';
    }

    template <class T, class Write>
    void list(char const* name, Vector<T> const& items, Write&& write)
    {
        out_ << name << ":\n";
        for (T const& item : items) {
            out_ << "    ";
            write(item);
            out_ << '\n';
        }
    }

    std::ostream& stream() { return out_; }
    String text() const { return out_.str().c_str(); }

private:
    std::ostringstream out_;
};

} // namespace

TextureClassificationModel::TextureClassificationModel()
    : private_(new TextureClassificationModelPrivate)
{
}

TextureClassificationModel::TextureClassificationModel(TextureClassificationModel const& other)
    : private_(new TextureClassificationModelPrivate(*other.private_))
{
}

TextureClassificationModel& TextureClassificationModel::operator=(TextureClassificationModel const& other)
{
    TextureClassificationModel copy(other);
    std::swap(private_, copy.private_);
    return *this;
}

TextureClassificationModel::~TextureClassificationModel()
{
    delete private_;
}

void TextureClassificationModel::read(String const& path)
{
    if (!exists(path)) {
        refuse("The <", path, "> file does not exists.");
    }
    auto loaded = modelFile::parse(path, bytesOf(path));
    delete private_;
    private_ = loaded.release();
}

void TextureClassificationModel::write(String const& path, WriteMode const& mode, bool overwrite) const
{
    if (!private_->classifier) {
        refuse("No classifier defined.");
    }
    if (!overwrite && exists(path)) {
        refuse("The <", path, "> file already exists.");
    }
    if (mode < WRITE_MODE_BINARY || mode > WRITE_MODE_XML) {
        refuse("The write mode (", static_cast<int>(mode), ") is unknown.");
    }
    auto const content = modelFile::compose(*private_, mode); // before an old file is emptied
    std::ofstream file(path.c_str(), mode == WRITE_MODE_BINARY ? std::ios::out | std::ios::binary : std::ios::out);
    if (!file) {
        refuse("Cannot open the <", path, "> file.");
    }
    file << content;
    file.close();
    if (!file) {
        refuse("Cannot write the <", path, "> file.");
    }
}

String TextureClassificationModel::getInfo() const
{
    TextureClassificationModelPrivate const& model = *private_;
    if (!model.classifier) {
        helper::raise<InvalidCall>(source, "No classifier defined.");
    }
    Listing listing;
    std::ostream& out = listing.stream();
    EnumInfo const& names = getEnumInfo<segmentation::TextureFeatureTypes>();
    listing.value("Number of classes", model.numOfClasses);
    listing.value("radius", model.radius);
    listing.list("textureFeaturesGroup", model.textureFeaturesGroup, [&](auto type) { out << names.getName(type); });
    listing.value("minGreyLevelCooccurrence", model.minGreyLevelCooccurrence);
    listing.value("maxGreyLevelCooccurrence", model.maxGreyLevelCooccurrence);
    listing.value("binSizeCooccurrence", model.binSizeCooccurrence);
    listing.list("directionCollection", model.directionCollection,
                 [&](auto const& direction) { out << direction[0] << ' ' << direction[1]; });
    listing.value("minGreyLevelHistogram", model.minGreyLevelHistogram);
    listing.value("maxGreyLevelHistogram", model.maxGreyLevelHistogram);
    listing.value("binSizeHistogram", model.binSizeHistogram);
    listing.list("userQuantileRatioHistogram", model.userQuantileRatioHistogram, [&](double ratio) { out << ratio; });
    return listing.text();
}

} // namespace classification
} // namespace mox
