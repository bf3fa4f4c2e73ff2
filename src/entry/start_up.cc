#include "entry/start_up.h"

#include "base/cp1251_literal.h"
#include "base/error.h"
#include "entry/failure_text.h"

namespace customsconv {

StartUpState::StartUpState(Host& host)
    : dialogs_(host.dialogs),
      host_{host.files, host.clock, dialogs_, host.processes},
      shared_(host_),
      today_(host.clock),
      environment_{host_, {}, {}, {}, nullptr, shared_, today_} {}

bool StartUpState::StartUp(std::string_view program_dir, std::string_view aux_dir) {
  quiet_failure_.clear();
  environment_.base_path = program_dir;
  environment_.data_path = environment_.base_path + "Data\\";
  const std::string ini_file = environment_.base_path + "kord.ini";
  if (!environment_.host.files.Exists(ini_file)) {
    throw Error(std::string("Не найден файл "_cp1251) + environment_.base_path + "Kord.ini");
  }
  // The last call's configuration may have something to write before the file is read.
  environment_.config = nullptr;
  config_.reset();
  auto config = std::make_unique<TConfiguration>(environment_.host, ini_file, CreateMode::kCreate,
                                                 CodePage::kWindows);
  try {
    environment_.aux_path = aux_dir;
    config_ = std::move(config);
    environment_.config = config_.get();
    LoadTypes();
    return true;
  } catch (const std::exception& error) {
    quiet_failure_ = ToldText(error);
  }
  environment_.config = nullptr;
  config_.reset();
  return false;
}

void StartUpState::LoadTypes() {
  const bool was_told = dialogs_.TakeNoted();
  // File names are short texts, as in all that the exports take and pass on.
  const ShortText catalogue_file = JoinShort({environment_.data_path, kDcfFileName});
  if (!was_told && types_ != nullptr && types_->IsCurrent(catalogue_file, true, environment_)) {
    types_->ForgetDocuments();
  } else {
    types_ = std::make_unique<TDocTypeList>(catalogue_file, true, environment_);
  }
}

void StartUpState::TearDown() {
  environment_.config = nullptr;
  config_.reset();
  types_.reset();
}

}  // namespace customsconv
