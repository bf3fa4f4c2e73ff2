// Not part of any program: must not compile with SNOWMAN defined.
#include "base/cp1251_literal.h"

using customsconv::operator""_cp1251;

#ifdef SNOWMAN
constexpr std::string_view kText = "снег ☃"_cp1251;
#else
constexpr std::string_view kText = "снег"_cp1251;
#endif

static_assert(!kText.empty());
