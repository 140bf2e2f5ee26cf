#include "apps/moxel/RunCommand.h"

#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/Property.h>

#include <oneapi/tbb/global_control.h>
#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <utility>

#include "apps/moxel/Algorithms.h"
#include "apps/moxel/Errors.h"
#include "apps/moxel/Interaction.h"
#include "apps/moxel/Interrupt.h"
#include "apps/moxel/PropertyKind.h"
#include "apps/moxel/RunValues.h"

namespace moxel {

namespace {

class Run {
public:
    Run(boost::shared_ptr<mox::BaseAlgorithm> algorithm, RunOptions const& options)
        : algorithm_(std::move(algorithm))
        , values_(readRunValues(*algorithm_, options))
    {
        algorithm_->setMaximumExtraMemoryUsage(options.extraMemory);
        setLevel(options.level);
        bindProperties();
    }

    void compute()
    {
        for (auto const& binding : bindings_) {
            binding->load();
        }
        checkResults();
        std::optional<ProgressBar> bar;
        if (::isatty(STDERR_FILENO) != 0) {
            bar.emplace(std::cerr);
        }
        Interaction interaction(bar ? &*bar : nullptr);
        algorithm_->run(&interaction);
        interrupt::check();
    }

    void store()
    {
        carryUnit();
        for (auto const& binding : bindings_) {
            binding->store();
        }
        for (auto const& binding : bindings_) {
            binding->publish();
        }
    }

    void print(OutputForm form, std::ostream& out) const
    {
        Json results = Json::object();
        for (mox::BaseProperty const* property : outputsOf(*algorithm_)) {
            PropertyKind const& kind = kindOf(*property);
            if (kind.json == nullptr) {
                continue;
            }
            std::string const name = property->getName().c_str();
            results[name] = kind.json(*property);
            if (form == OutputForm::text) {
                out << name << " = " << kind.text(*property) << '\n';
            }
        }
        if (form == OutputForm::json) {
            out << textOf(results) << '\n';
        }
    }

private:
    void setLevel(std::string const& name)
    {
        if (name == "auto") {
            return;
        }
        mox::OptimLevelType const level = levelNamed(name);
        if (!algorithm_->isOptimLevelSupported(level)) {
            throw UsageError(std::string(algorithm_->getInfo()->getName()) + " has no level " + quoted(name));
        }
        algorithm_->setAutoCpuDispatch(false);
        algorithm_->setOptimLevel(level);
    }

    void bindProperties()
    {
        for (RunValue const& value : values_) {
            try {
                keep(kindOf(*value.property).bind(*value.property, value.text, value.options));
            } catch (UsageError const& error) {
                throw UsageError(std::string(value.property->getName().c_str()) + ": " + error.what());
            }
        }
        for (mox::BaseProperty* property : outputsOf(*algorithm_)) {
            if (PropertyKind const& kind = kindOf(*property); kind.prepareResult != nullptr) {
                keep(kind.prepareResult(*property));
            }
        }
    }

    void keep(std::unique_ptr<PropertyBinding> binding)
    {
        if (binding != nullptr) {
            bindings_.push_back(std::move(binding));
        }
    }

    /// The rules shape the outputs, so that a file that cannot take its image is known before the long work. What they
    /// refuse, the run refuses again and tells in full.
    void checkResults() const
    {
        try {
            for (auto const& properties : {inputsOf(*algorithm_), outputsOf(*algorithm_)}) {
                std::for_each(properties.begin(), properties.end(), [](auto* property) { property->applyRules(); });
            }
        } catch (...) {
            return;
        }
        for (auto const& binding : bindings_) {
            binding->check();
        }
    }

    /// The library carries steps from image to image, but no unit.
    void carryUnit() const
    {
        mox::ImageModel const* const input = firstInputImage();
        if (input == nullptr) {
            return;
        }
        for (mox::BaseProperty* property : outputsOf(*algorithm_)) {
            auto* const image = dynamic_cast<mox::Property<mox::ImageModel*>*>(property);
            if (image != nullptr && image->get() != nullptr && image->get()->getUnit() == "" &&
                haveSameSteps(*input, *image->get())) {
                image->get()->setUnit(input->getUnit());
            }
        }
    }

    mox::ImageModel const* firstInputImage() const
    {
        for (mox::BaseProperty const* property : inputsOf(*algorithm_)) {
            auto const* const image = dynamic_cast<mox::Property<mox::ImageModel const*> const*>(property);
            if (image != nullptr && image->get() != nullptr) {
                return image->get();
            }
        }
        return nullptr;
    }

    static bool haveSameSteps(mox::ImageModel const& a, mox::ImageModel const& b)
    {
        auto const dimensions = {mox::COLUMNS, mox::ROWS, mox::PLANS, mox::TIME_SERIES, mox::SPECTRAL_SERIES};
        return std::all_of(dimensions.begin(), dimensions.end(), [&](mox::ImageDimension dimension) {
            return a.getCalibrationStep(dimension) == b.getCalibrationStep(dimension);
        });
    }

    boost::shared_ptr<mox::BaseAlgorithm> algorithm_;
    std::vector<RunValue> values_;
    std::vector<std::unique_ptr<PropertyBinding>> bindings_;
};

} // namespace

void runAlgorithm(boost::shared_ptr<mox::BaseAlgorithm> const& algorithm, RunOptions const& options, std::ostream& out)
{
    std::optional<tbb::global_control> threads;
    if (options.threads) {
        threads.emplace(tbb::global_control::max_allowed_parallelism, *options.threads);
    }
    Run run(algorithm, options);
    run.compute();
    run.store();
    run.print(options.form, out);
}

} // namespace moxel
