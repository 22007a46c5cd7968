#pragma once

#include <map>
#include <string>
#include <string_view>

namespace tallowmere {

/// The user's settings: text values by key, UTF-8. Failures are silent: a value that cannot be
/// read is empty, one that cannot be written is lost.
class SettingsStore {
 public:
  virtual ~SettingsStore() = default;
  /// The empty string when the key is missing.
  virtual std::string get_setting(std::string_view key) = 0;
  virtual void save_setting(std::string_view key, const std::string& value) = 0;
};

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
