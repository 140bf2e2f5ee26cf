// Texture classification from end to end: a model learns textures, goes to a file, and tells the textures of a picture.
//
//     textures train MODEL TEXTURE.pgm ...       one class per file; learns its left half
//     textures classify MODEL PICTURE.pgm RESULT.ppm
//
// The two may run in different processes; the model file is all that they share. Without arguments, the program makes
// textures and a picture of its own and does both.

#include <Moxelcore/Moxelcore.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using mox::memory::InMemoryImage;
using Model = mox::classification::TextureClassificationModel;
using Row = std::vector<unsigned char>;

std::unique_ptr<InMemoryImage> newImage(unsigned int columns, unsigned int rows)
{
    auto image = std::make_unique<InMemoryImage>();
    image->allocate(mox::MOX_UINT8, columns, rows, 1, 1, 1);
    return image;
}

std::unique_ptr<InMemoryImage> readPgm(std::string const& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string magic;
    unsigned int columns = 0;
    unsigned int rows = 0;
    unsigned int most = 0;
    file >> magic >> columns >> rows >> most;
    file.ignore();
    if (!file || magic != "P5" || most > 255) {
        throw std::runtime_error(path + " is no binary PGM file of one byte a pixel");
    }
    auto image = newImage(columns, rows);
    Row row(columns);
    for (unsigned int y = 0; y < rows; ++y) {
        file.read(reinterpret_cast<char*>(row.data()), columns);
        image->writeRowAt(columns, row.data(), 0, y, 0, 0, 0);
    }
    return image;
}

void writePgm(InMemoryImage const& image, std::string const& path)
{
    std::ofstream file(path, std::ios::binary);
    unsigned int const columns = image.getSize(mox::COLUMNS);
    file << "P5 " << columns << ' ' << image.getSize(mox::ROWS) << " 255\n";
    Row row(columns);
    for (unsigned int y = 0; y < image.getSize(mox::ROWS); ++y) {
        image.readRowAt(columns, row.data(), 0, y, 0, 0, 0);
        file.write(reinterpret_cast<char const*>(row.data()), columns);
    }
}

/// Each label in a colour of its own.
void writeColours(InMemoryImage const& labels, std::string const& path)
{
    constexpr std::array<std::array<char, 3>, 6> colours = {{{'\xe6', '\x9f', '\0'},
                                                             {'\x56', '\xb4', '\xe9'},
                                                             {'\0', '\x9e', '\x73'},
                                                             {'\xf0', '\xe4', '\x42'},
                                                             {'\0', '\x72', '\xb2'},
                                                             {'\xcc', '\x79', '\xa7'}}};
    std::ofstream file(path, std::ios::binary);
    unsigned int const columns = labels.getSize(mox::COLUMNS);
    file << "P6 " << columns << ' ' << labels.getSize(mox::ROWS) << " 255\n";
    Row row(columns);
    for (unsigned int y = 0; y < labels.getSize(mox::ROWS); ++y) {
        labels.readRowAt(columns, row.data(), 0, y, 0, 0, 0);
        for (unsigned char const label : row) {
            file.write(colours[(label - 1U) % colours.size()].data(), 3);
        }
    }
}

/// Contrast along rows, columns and both diagonals, and the commonest grey level, on a disk of radius 12.
std::unique_ptr<Model> createModel(unsigned int numOfClasses)
{
    mox::Vector<int> features;
    features.push_back(mox::segmentation::COOC_Contrast);
    features.push_back(mox::segmentation::HISTO_Peak);
    mox::Vector<mox::math::Vector2<int>> directions;
    for (auto const& direction : {mox::math::Vector2(1, 0), {0, 1}, {1, 1}, {1, -1}}) {
        directions.push_back(direction);
    }
    Model* model = nullptr;
    auto const create = mox::classification::CreateTextureClassification2D::New();
    create->numOfClasses = numOfClasses;
    create->radius = 12;
    create->textureFeaturesGroup = features;
    create->directionCollection = directions;
    create->binSizeCooccurrence = 32.0;
    create->binSizeHistogram = 4.0;
    create->classificationModel = &model;
    create->run();
    return std::unique_ptr<Model>(model);
}

/// A mask with the label on the left half of the image.
std::unique_ptr<InMemoryImage> leftHalf(InMemoryImage const& image, unsigned char label)
{
    unsigned int const columns = image.getSize(mox::COLUMNS);
    auto mask = newImage(columns, image.getSize(mox::ROWS));
    mask->setInterpretation(mox::INTERPRETATION_LABEL);
    Row row(columns);
    std::fill(row.begin(), row.begin() + columns / 2, label);
    for (unsigned int y = 0; y < image.getSize(mox::ROWS); ++y) {
        mask->writeRowAt(columns, row.data(), 0, y, 0, 0, 0);
    }
    return mask;
}

void train(std::string const& modelPath, std::vector<std::string> const& textures)
{
    auto const model = createModel(static_cast<unsigned int>(textures.size()));
    for (std::size_t i = 0; i < textures.size(); ++i) {
        auto const image = readPgm(textures[i]);
        auto const mask = leftHalf(*image, static_cast<unsigned char>(i + 1));
        auto const training = mox::classification::TextureTraining2D::New();
        training->input = image.get();
        training->mask = mask.get();
        training->finalizeTraining = i + 1 == textures.size();
        training->classificationModel = model.get();
        training->run();
    }
    model->write(modelPath.c_str(), mox::classification::WRITE_MODE_BINARY, true);
    std::cout << model->getInfo().c_str();
}

void classify(std::string const& modelPath, std::string const& picture, std::string const& result)
{
    Model* read = nullptr;
    auto const reading = mox::classification::ReadTextureClassificationModel::New();
    reading->pathClassificationFile = mox::String(modelPath.c_str());
    reading->newClassification = &read;
    reading->run();
    std::unique_ptr<Model> const model(read);

    auto const image = readPgm(picture);
    auto const labels = newImage(1, 1); // takes the picture's sizes
    auto const apply = mox::classification::ApplyClassification::New();
    apply->input = image.get();
    apply->classificationModel = model.get();
    apply->classifiedImage = labels.get();
    apply->run();
    writeColours(*labels, result);
    std::cout << "The textures of " << picture << " are in " << result << '\n';
}

/// Vertical stripes, horizontal stripes, or checks.
unsigned char pixelOf(std::size_t texture, unsigned int x, unsigned int y)
{
    unsigned int const wave = texture == 0 ? x / 3 : texture == 1 ? y / 3 : x / 3 + y / 3;
    return static_cast<unsigned char>(60 + 100 * (wave % 2) + (7 * x + 5 * y) % 11);
}

void doItAll()
{
    constexpr unsigned int side = 120;
    auto const folder = std::filesystem::temp_directory_path() / "moxelcore-textures";
    std::filesystem::create_directories(folder);
    std::vector<std::string> files;
    auto const picture = newImage(3 * side, side);
    for (std::size_t texture = 0; texture < 3; ++texture) {
        auto const image = newImage(side, side);
        Row row(side);
        for (unsigned int y = 0; y < side; ++y) {
            for (unsigned int x = 0; x < side; ++x) {
                row[x] = pixelOf(texture, x, y);
            }
            image->writeRowAt(side, row.data(), 0, y, 0, 0, 0);
            picture->writeRowAt(side, row.data(), static_cast<unsigned int>(texture) * side, y, 0, 0, 0);
        }
        files.push_back((folder / ("texture" + std::to_string(texture) + ".pgm")).string());
        writePgm(*image, files.back());
    }
    writePgm(*picture, (folder / "picture.pgm").string());
    train((folder / "model.mox").string(), files);
    classify((folder / "model.mox").string(), (folder / "picture.pgm").string(), (folder / "result.ppm").string());
}

} // namespace

int main(int argc, char** argv)
{
    std::vector<std::string> const words(argv + 1, argv + argc);
    try {
        if (words.empty()) {
            doItAll();
        } else if (words.size() > 3 && words[0] == "train") {
            train(words[1], {words.begin() + 2, words.end()});
        } else if (words.size() == 4 && words[0] == "classify") {
            classify(words[1], words[2], words[3]);
        } else {
            std::cerr << "textures train MODEL TEXTURE.pgm TEXTURE.pgm ...\n"
                         "textures classify MODEL PICTURE.pgm RESULT.ppm\n";
            return 2;
        }
    } catch (mox::Exception const& exception) {
        std::cerr << exception.what().c_str();
        return 1;
    } catch (std::exception const& exception) {
        std::cerr << exception.what() << '\n';
        return 1;
    }
    return 0;
}
