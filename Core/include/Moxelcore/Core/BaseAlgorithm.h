#pragma once

#include <Moxelcore/Core/AlgoBorderInfluence.h>
#include <Moxelcore/Core/AlgoInfo.h>
#include <Moxelcore/Core/Api.h>
#include <Moxelcore/Core/BaseProperty.h>
#include <Moxelcore/Core/Enum/OptimLevelType.h>
#include <Moxelcore/Core/Exception.h>
#include <Moxelcore/Core/InteractionInterface.h>

#include <atomic>

namespace mox {

struct AlgorithmState;

/// Base of all algorithms: properties in, `run`, properties out.
///
/// A copy is a second handle to the same parameters and settings. It must not be run once its source is gone:
/// `run` then throws `InvalidCall`.
class MOXELCORE_API BaseAlgorithm {
public:
    virtual ~BaseAlgorithm();
    virtual AlgoInfo* getInfo() const = 0;
    /// How far the algorithm, with its present properties, reads beyond a voxel that it writes.
    virtual AlgoBorderInfluence getAlgoBorderInfluence() const = 0;

    /// Checks the properties, computes, and returns when all is done or the run was cancelled.
    ///
    /// Without an interaction object the work starts in the caller's thread; with one, on a thread of its own, while
    /// the caller polls the object. Either way the parallel loops use all of oneTBB's threads. A call during a run
    /// of the same object is ignored.
    ///
    /// Throws `RuleException` when a property is refused, before any voxel is written, and other exceptions of the
    /// family when the work fails; a `std::exception` becomes an `UnexpectedError`. The properties are unlocked
    /// afterwards and the object can be run again. A cancelled run leaves outputs partly written and throws nothing.
    void run(algorithms::InteractionInterface* interaction = nullptr);

    bool running() const;
    /// May be called from any thread. False while no work is attached; the request is then still honoured by the
    /// run in progress.
    bool cancelExecution();
    bool isExecutionCancelled() const;
    /// Percent; 0 while nothing runs.
    double getProgress() const;

    unsigned int getNumOfProperties() const;
    unsigned int getNumOfInputProperties() const;
    unsigned int getNumOfOutputProperties() const;
    /// Null beyond the last.
    BaseProperty* getInputProperty(unsigned int index) const;
    BaseProperty* getOutputProperty(unsigned int index) const;
    /// Inputs first; null when there is none of that name.
    BaseProperty* getPropertyfromName(String const& name) const;

    /// Limit for the temporary image of iterated filters, in units of 2^20 voxels; 0 (the default) forbids it.
    void setMaximumExtraMemoryUsage(int mebivoxels);
    int getMaximumExtraMemoryUsage() const;

    /// The one level to use when the automatic choice is off; `SCALAR` unless set.
    void setOptimLevel(OptimLevelType const& level);
    /// On (the default): the highest level whose runner can run on this processor and these properties.
    void setAutoCpuDispatch(bool automatic);
    /// Whether the class has a runner of that level; whether it can run here is not asked.
    bool isOptimLevelSupported(OptimLevelType const& level) const;
    /// The highest level of which the class has a runner; -1 when it has none.
    OptimLevelType getMostPerformantAvailableOptimLevel() const;

protected:
    BaseAlgorithm();
    BaseAlgorithm(BaseAlgorithm const& other);
    BaseAlgorithm& operator=(BaseAlgorithm const& other);

    void addInput(BaseProperty* property);
    void addOutput(BaseProperty* property);
    bool lockAllProperties(bool locked);
    virtual void applyAllRules();

    /// Lines of `init`: append the property, give it its default, its name and its rules.
    /// Defined in the library's private headers.
    template <class P, class V, class... Rule>
    void declareInput(P& property, char const* name, V const& defaultValue, Rule const&... rules);
    template <class P, class V, class... Rule>
    void declareOutput(P& property, char const* name, V const& defaultValue, Rule const&... rules);

private:
    friend struct AlgorithmAccess;
    AlgorithmState* state_;
    std::atomic<bool> running_ = false;
};

} // namespace mox

/// What every algorithm class has of its own: a static way to make an object and the class record. Alone, in classes
/// that inherit properties and border influence from a family.
#define MOX_DECLARE_FAMILY_MEMBER(Class)                                                                               \
public:                                                                                                                \
    static boost::shared_ptr<Class> New();                                                                             \
    static boost::shared_ptr<mox::BaseAlgorithm> NewBase();                                                            \
    static mox::AlgoInfo* getClassInfo();                                                                              \
    mox::AlgoInfo* getInfo() const override;                                                                           \
                                                                                                                       \
private:                                                                                                               \
    Class();                                                                                                           \
                                                                                                                       \
public:

/// What every other algorithm class has beside its properties.
#define MOX_DECLARE_ALGORITHM(Class)                                                                                   \
    MOX_DECLARE_FAMILY_MEMBER(Class)                                                                                   \
    mox::AlgoBorderInfluence getAlgoBorderInfluence() const override;                                                  \
                                                                                                                       \
private:                                                                                                               \
    void init();                                                                                                       \
                                                                                                                       \
public:
