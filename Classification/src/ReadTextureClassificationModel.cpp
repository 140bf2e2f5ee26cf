#include <Moxelcore/Classification/ReadTextureClassificationModel.h>

#include "Classification/private/newModel.h"
#include "Core/private/Rules/RuleAssertNotNull.h"
#include "Core/private/declare.h"
#include "Core/private/runners.h"

namespace mox::classification {

namespace {

class ScalarReadTextureClassificationModelRunner final : public ScalarRunner<ReadTextureClassificationModel> {
private:
    void execute(ReadTextureClassificationModel& algorithm) const override
    {
        constexpr char const* source = "Classification/src/ReadTextureClassificationModel";
        String const path = algorithm.pathClassificationFile;
        if (path.length() == 0) {
            helper::raise<InvalidCall>(source, "The path is empty.");
        }
        auto model = newModel(source);
        model->read(path);
        *algorithm.newClassification.get() = model.release();
    }
};

Registration<ReadTextureClassificationModel, ScalarReadTextureClassificationModelRunner> const registration;

} // namespace

MOX_DEFINE_ALGORITHM(ReadTextureClassificationModel)

void ReadTextureClassificationModel::init()
{
    declareInput(pathClassificationFile, "pathClassificationFile", String());
    declareOutput(newClassification, "newClassification", nullptr, rule<RuleAssertNotNull>());
}

AlgoBorderInfluence ReadTextureClassificationModel::getAlgoBorderInfluence() const
{
    return {0, 0, 0, 0, 0};
}

} // namespace mox::classification
