#include "engine/search_criteria.h"

namespace tallowmere {

void load_search_criteria(SearchCriteria& search, const CriteriaInput& input) {
  search.match_case = input.match_case;
  search.prox_before = input.prox_before;
  search.prox_after = input.prox_after;
  search.prox_all = input.prox_all;
  search.search_type = input.search_type;
  search.criteria = input.criteria;
  // A phrase is meant as it is. Other criteria lose only their trailing spaces: leading ones stay
  // in the text, and the split skips them.
  if (search.search_type != search_phrase) {
    search.criteria.resize(search.criteria.find_last_not_of(' ') + 1);
  }
}

}  // namespace tallowmere
