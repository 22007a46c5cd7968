#pragma once

#include <map>
#include <string>
#include <string_view>

#include "shell/settings_store.h"

namespace tallowmere {

/// Settings that live as long as the object.
class MemorySettings : public SettingsStore {
 public:
  std::string get_setting(std::string_view key) override {
    auto found = values_.find(key);
    return found == values_.end() ? std::string() : found->second;
  }
  void save_setting(std::string_view key, const std::string& value) override {
    values_.insert_or_assign(std::string(key), value);
  }

 private:
  std::map<std::string, std::string, std::less<>> values_;
};

}  // namespace tallowmere
