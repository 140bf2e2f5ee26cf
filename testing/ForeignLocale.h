#pragma once

#include <locale>
#include <string>

namespace mox::testing {

/// The global locale of an application whose numbers look like "1.234,5", for the life of the object.
class ForeignLocale {
public:
    ForeignLocale()
        : before_(std::locale::global(std::locale(std::locale::classic(), new Numbers)))
    {
    }
    ForeignLocale(ForeignLocale const&) = delete;
    ForeignLocale& operator=(ForeignLocale const&) = delete;
    ~ForeignLocale() { std::locale::global(before_); }

private:
    struct Numbers : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };

    std::locale before_;
};

} // namespace mox::testing
