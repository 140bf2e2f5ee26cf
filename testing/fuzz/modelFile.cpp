// Reads any bytes as a model file: an error, or a model that can be used. The first byte chooses the form; the seeds
// are the golden files of the tests with such a byte before them.

#include <boost/archive/archive_exception.hpp>

#include <Moxelcore/Core/Exception.h>

#include <cstdint>
#include <string_view>

#include "Classification/private/modelFile.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    using namespace mox::classification;
    if (size == 0) {
        return 0;
    }
    char const* const paths[] = {"model.mox", "model.txt", "model.xml"};
    try {
        auto const model = modelFile::parse(paths[data[0] % 3], {reinterpret_cast<char const*>(data) + 1, size - 1});
        auto const classifier = model->classifier->clone();
        classifier->classify(LDAClassifier::Sample::Zero(classifier->getLearningSpaceDimension()));
        modelFile::compose(*model, WRITE_MODE_XML);
    } catch (mox::SerializationException const&) {
    } catch (boost::archive::archive_exception const&) {
    }
    return 0;
}
