// Reads any bytes as a model file of one form: an error, or a model that can be used.

#include <boost/archive/archive_exception.hpp>

#include <Moxelcore/Core/Exception.h>

#include <cstdint>
#include <string_view>

#include "Classification/private/modelFile.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    using namespace mox::classification;
    try {
        auto const model = modelFile::parse(MODEL_FILE, {reinterpret_cast<char const*>(data), size});
        auto const classifier = model->classifier->clone();
        classifier->classify(LDAClassifier::Sample::Zero(classifier->getLearningSpaceDimension()));
        modelFile::compose(*model, WRITE_MODE_XML);
    } catch (mox::SerializationException const&) {
    } catch (boost::archive::archive_exception const&) {
    }
    return 0;
}
