#pragma once

#include <Moxelcore/Core/Api.h>
#include <Moxelcore/Core/String.h>

#include <atomic>

namespace mox {

/// A named parameter of an algorithm, seen without its type. A host finds the properties of an algorithm through
/// `BaseAlgorithm::getInputProperty` and its kin, sets them from text with `read`, or casts to `Property<T>`.
class MOXELCORE_API BaseProperty {
public:
    BaseProperty() = default;
    BaseProperty(BaseProperty const& other) noexcept;
    BaseProperty& operator=(BaseProperty const& other) noexcept;

    /// Checks the value against the property's rules in their order. Throws `RuleException` at the first that fails.
    virtual void applyRules() = 0;
    virtual String getName() const = 0;
    /// Sets the value from text. False when the property is locked or the text cannot be read.
    /// `echo` receives the text.
    virtual bool read(String const& text, String& echo) = 0;
    virtual ~BaseProperty();

    /// A locked property ignores `set` and refuses `read`. An algorithm locks its properties while it runs.
    void lock(bool locked);
    bool isLocked() const;

private:
    std::atomic<bool> locked_ = false;
};

} // namespace mox
