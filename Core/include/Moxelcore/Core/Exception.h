#pragma once

#include <Moxelcore/Core/Api.h>
#include <Moxelcore/Core/String.h>

namespace mox {

/// Base of everything the library throws. Exceptions are thrown by value and caught by reference; the frame adds
/// a level of information on the way out: the rule or body that failed, the property, the algorithm.
///
/// Copies share their levels. The family does not derive from `std::exception`.
class MOXELCORE_API Exception {
public:
    /// One level of information. Empty fields are left out of the text.
    struct MOXELCORE_API exceptionInfo {
        String message;
        String file;
        int line = 0;
        String className;
        String libName;
    };

    Exception(Exception const& other) noexcept;
    Exception& operator=(Exception const& other) noexcept;

    /// The prefix of the class, a line end, and the text of `getInfo`.
    virtual String what() const = 0;

    /// The levels in the order in which they were added, one paragraph each:
    ///
    ///     #1 Error : Parameter value cannot be null
    ///         (at "RuleAssertNotNull", line 14)
    ///     #2 From Rule error in property input
    ///     #3 From Threshold of Moxelcore library
    virtual String getInfo() const;

    void addInfoLevel(exceptionInfo const& info);

protected:
    explicit Exception(exceptionInfo const& info);
    ~Exception();

    /// `what` of a concrete class.
    String withPrefix(char const* prefix) const;

private:
    struct Levels;
    Levels* levels_;
};

/// A property value that a rule refuses.
class MOXELCORE_API RuleException final : public Exception {
public:
    explicit RuleException(exceptionInfo const& info);
    String what() const override;
};

/// A file that cannot be written or read as a model.
class MOXELCORE_API SerializationException final : public Exception {
public:
    explicit SerializationException(exceptionInfo const& info);
    String what() const override;
};

/// Abstract base of the failures of a computation.
class MOXELCORE_API ProcessingException : public Exception {
protected:
    explicit ProcessingException(exceptionInfo const& info);
    ~ProcessingException() = default;
};

class MOXELCORE_API MemoryError final : public ProcessingException {
public:
    explicit MemoryError(exceptionInfo const& info);
    String what() const override;
};

class MOXELCORE_API FileSystemError final : public ProcessingException {
public:
    explicit FileSystemError(exceptionInfo const& info);
    String what() const override;
};

/// A failure that no other class tells, among them every `std::exception` that leaves a run.
class MOXELCORE_API UnexpectedError final : public ProcessingException {
public:
    explicit UnexpectedError(exceptionInfo const& info);
    String what() const override;
};

/// A call with an argument that the callee cannot take.
class MOXELCORE_API InvalidCall final : public ProcessingException {
public:
    explicit InvalidCall(exceptionInfo const& info);
    String what() const override;
};

class MOXELCORE_API BadIndex final : public ProcessingException {
public:
    explicit BadIndex(exceptionInfo const& info);
    String what() const override;
};

class MOXELCORE_API RuntimeError final : public ProcessingException {
public:
    explicit RuntimeError(exceptionInfo const& info);
    String what() const override;
};

} // namespace mox
