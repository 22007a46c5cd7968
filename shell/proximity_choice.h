#pragma once

#include <string_view>

namespace tallowmere {

inline constexpr int proximity_min = 0;
inline constexpr int proximity_max = 1000;
inline constexpr int proximity_default = 110;
inline constexpr int proximity_mouse_step = 10;
inline constexpr int proximity_page_key_step = 100;

inline constexpr std::string_view zero_proximity_text =
    "Only one value can be set to zero, not both.";

/// The values of the proximity dialog, which holds them while the criteria dialog is open.
class ProximityChoice {
 public:
  int before = proximity_default;
  int after = proximity_default;
  bool all_words = false;

  /// Fits the counts into the range, in place; a pair of zeros becomes the default. Then takes over
  /// the three values.
  void ini_frmProximity(bool prox_all, int& prox_before, int& prox_after);

  /// Notes the values when the dialog opens, for restore() on Cancel.
  void remember();
  void restore();

  /// Sets both counts to the default; the option stays.
  void reset();

  /// False for a pair of zeros, which OK refuses with zero_proximity_text.
  bool acceptable() const { return before != 0 || after != 0; }

  /// The last line of the explanation, Label6.
  std::string_view explanation() const;

 private:
  int remembered_before_ = proximity_default;
  int remembered_after_ = proximity_default;
  bool remembered_all_words_ = false;
};

}  // namespace tallowmere
