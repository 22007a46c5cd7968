#include "dialogs/frmHints.h"

namespace tallowmere {

frmExamples& frmHints::examples() {
  if (!examples_) examples_ = std::make_unique<frmExamples>(handle());
  return *examples_;
}

}  // namespace tallowmere
