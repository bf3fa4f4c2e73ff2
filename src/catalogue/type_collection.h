#ifndef CUSTOMSCONV_CATALOGUE_TYPE_COLLECTION_H_
#define CUSTOMSCONV_CATALOGUE_TYPE_COLLECTION_H_

#include <forward_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/lifetime.h"
#include "catalogue/doc_info.h"
#include "text/key_index.h"

namespace customsconv {

// The types of the catalogue while its files are read, in the order of their sections. No two
// codes differ by letter case alone.
class TypeCollection {
 public:
  [[nodiscard]] std::size_t Count() const { return types_.size(); }
  [[nodiscard]] TDocInfo& Item(std::size_t i) const CUSTOMSCONV_LIFETIME_BOUND {
    return *types_[i];
  }
  // The type of that code, in any letter case, or null.
  [[nodiscard]] TDocInfo* Find(std::string_view code) const CUSTOMSCONV_LIFETIME_BOUND {
    const int position = codes_.Find(code);
    return position < 0 ? nullptr : types_[static_cast<std::size_t>(position)].get();
  }
  // The caller knows that Find gives nothing for the code.
  TDocInfo& Add(std::unique_ptr<TDocInfo> info) CUSTOMSCONV_LIFETIME_BOUND {
    codes_.Add(info->Code, static_cast<int>(types_.size()));
    return *types_.emplace_back(std::move(info));
  }
  // Keeps the name of a file for its types, which point to it.
  [[nodiscard]] std::string_view KeepFileName(std::string name) {
    return file_names_.emplace_front(std::move(name));
  }
  // Gives the types and their files' names away; the collection is empty afterwards.
  [[nodiscard]] std::vector<std::unique_ptr<TDocInfo>> Take(
      std::forward_list<std::string>& file_names) {
    codes_.Clear();
    file_names = std::exchange(file_names_, {});
    return std::exchange(types_, {});
  }

 private:
  std::vector<std::unique_ptr<TDocInfo>> types_;
  std::forward_list<std::string> file_names_;
  KeyIndex codes_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_CATALOGUE_TYPE_COLLECTION_H_
