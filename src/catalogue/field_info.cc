#include "catalogue/field_info.h"

#include "catalogue/basis.h"

namespace customsconv {
namespace {

// Fields narrower than this are shown on one line whatever their type.
constexpr int kShortestLongText = 14;

}  // namespace

TFieldInfo::TFieldInfo() = default;
TFieldInfo::~TFieldInfo() = default;
TFieldInfo::TFieldInfo(TFieldInfo&&) noexcept = default;
TFieldInfo& TFieldInfo::operator=(TFieldInfo&&) noexcept = default;

bool TFieldInfo::IsLongText() const {
  if (type == FieldType::kComposite || lines > 1) return true;
  if (name.starts_with('&') || width < kShortestLongText) return false;
  return type == FieldType::kText;
}

}  // namespace customsconv
