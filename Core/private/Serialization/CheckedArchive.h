#pragma once

#include <boost/core/demangle.hpp>
#include <boost/mpl/bool.hpp>
#include <boost/serialization/array_wrapper.hpp>
#include <boost/serialization/nvp.hpp>
#include <boost/serialization/serialization.hpp>
#include <boost/shared_ptr.hpp>

#include <limits>
#include <map>
#include <type_traits>
#include <typeindex>
#include <vector>

#include "Core/private/Serialization/ArchiveSource.h"

namespace mox::serialization {

/// Reads what Boost's archives of the three forms write, through the same `serialize` functions, from bytes that
/// anyone may have made. Boost's own input archives use the identifiers and counts of a file as indices and sizes;
/// here each is compared with the only value that it can have, or with the bytes that are left. It follows that
/// memory stays in proportion to the file.
///
/// Reads numbers, enumerations, texts, classes with a `serialize`, vectors, arrays, and `boost::shared_ptr` to classes
/// of which each object is stored once.
class CheckedArchive {
public:
    using is_loading = boost::mpl::true_;
    using is_saving = boost::mpl::false_;

    explicit CheckedArchive(ArchiveSource& source)
        : source_(source)
    {
    }

    template <class T>
    CheckedArchive& operator&(boost::serialization::nvp<T> const& pair)
    {
        source_.enter(pair.name());
        load(pair.value());
        source_.leave(pair.name());
        return *this;
    }

    /// To be asked before memory for rows * columns numbers is taken.
    void requireNumbers(int64 rows, int64 columns) const
    {
        auto const left = static_cast<int64>(source_.bytesLeft());
        if (rows < 0 || columns < 0 || rows > left || columns > left || (columns > 0 && rows > left / columns)) {
            raiseDamagedArchive();
        }
    }

private:
    struct ClassRecord {
        int64 id;
        bool isIntroduced;
    };

    template <class T>
    void load(T& value)
    {
        if constexpr (std::is_enum_v<T>) {
            value = static_cast<T>(integer<int>());
        } else if constexpr (std::is_integral_v<T>) {
            value = integer<T>();
        } else if constexpr (std::is_floating_point_v<T>) {
            value = source_.real();
        } else {
            introduce(recordOf<T>(), 0, 0);
            boost::serialization::serialize_adl(*this, value, 0U);
        }
    }

    void load(std::string& value) { value = source_.text(); }

    template <class T>
    void load(std::vector<T>& values)
    {
        constexpr bool holdsNumbers = std::is_arithmetic_v<T>; // such a vector has no class of its own in a file
        ClassRecord& record = recordOf<std::vector<T>>();
        if (!holdsNumbers) {
            introduce(record, 0, 0);
        }
        std::size_t count = 0;
        *this& boost::serialization::make_nvp("count", count);
        if (!(holdsNumbers && source_.packsNumbers())) {
            unsigned int version = 0;
            *this& boost::serialization::make_nvp("item_version", version);
            expect(version, 0);
        }
        requireNumbers(static_cast<int64>(count), 1);
        values.clear();
        for (std::size_t i = 0; i < count; ++i) {
            values.emplace_back();
            *this& boost::serialization::make_nvp("item", values.back());
        }
    }

    template <class T>
    void load(boost::serialization::array_wrapper<T>& array)
    {
        for (std::size_t i = 0; i < array.count(); ++i) {
            *this& boost::serialization::make_nvp("item", array.address()[i]);
        }
    }

    template <class T>
    void load(boost::shared_ptr<T>& pointer)
    {
        introduce(recordOf<boost::shared_ptr<T>>(), 0, 1);
        source_.enter("px");
        ClassRecord& record = recordOf<T>();
        int64 const id = source_.frame("class_id", sizeof(short));
        if (id == -1) {
            pointer.reset();
        } else {
            expect(id, record.id);
            introduceFramed(record, 1, 0);
            expect(source_.frame("object_id", sizeof(unsigned int)), numOfObjects_++);
            pointer.reset(new T);
            boost::serialization::serialize_adl(*this, *pointer, 0U);
        }
        source_.leave("px");
    }

    template <class T>
    T integer()
    {
        int64 const value = source_.integer(sizeof(T), std::is_signed_v<T>);
        if constexpr (std::is_same_v<T, bool>) {
            expect(value, value != 0 ? 1 : 0);
        }
        return static_cast<T>(value);
    }

    /// Classes are numbered as they are met.
    template <class T>
    ClassRecord& recordOf()
    {
        auto const next = static_cast<int64>(classes_.size());
        return classes_.try_emplace(std::type_index(typeid(T)), ClassRecord{next, false}).first->second;
    }

    void introduce(ClassRecord& record, int64 tracking, int64 version)
    {
        if (!record.isIntroduced && source_.tellsClassIds()) {
            expect(source_.frame("class_id", sizeof(short)), record.id);
        }
        introduceFramed(record, tracking, version);
    }

    void introduceFramed(ClassRecord& record, int64 tracking, int64 version)
    {
        if (record.isIntroduced) {
            return;
        }
        expect(source_.frame("tracking_level", sizeof(bool)), tracking);
        expect(source_.frame("version", sizeof(unsigned int)), version);
        record.isIntroduced = true;
    }

    static void expect(int64 value, int64 wanted)
    {
        if (value != wanted) {
            raiseDamagedArchive();
        }
    }

    ArchiveSource& source_;
    std::map<std::type_index, ClassRecord> classes_;
    int64 numOfObjects_ = 0;
};

} // namespace mox::serialization
