// SPDX-License-Identifier: Apache-2.0
#include "sequencer/PlexoSequencingException.h"

#include <cstddef>
#include <iterator>

namespace {

struct PlexoExceptionRow {
  std::string_view code;
  std::string_view text;
};

/// In the order of PlexoSequencingException.
constexpr PlexoExceptionRow kExceptions[] = {
    {"", ""},
    {"NB.2.1-1", "the sequencing session has already begun"},
    {"NB.2.1-2", "the sequencing session has not begun"},
    {"NB.2.1-3", "no activity is suspended"},
    {"NB.2.1-4", "the control mode flow doesn't allow it"},
    {"NB.2.1-5", "the control modes flow and forwardOnly don't allow it"},
    {"NB.2.1-6", "no activity comes before the root"},
    {"NB.2.1-7", "the navigation request isn't supported"},
    {"NB.2.1-8", "the control mode choiceExit doesn't allow it"},
    {"NB.2.1-9", "there are no activities to consider"},
    {"NB.2.1-10", "the control mode choice doesn't allow it"},
    {"NB.2.1-11", "the target activity doesn't exist"},
    {"NB.2.1-12", "the current activity has already ended"},
    {"NB.2.1-13", "the navigation request isn't defined"},
    {"TB.2.3-1", "the sequencing session has not begun"},
    {"TB.2.3-2", "the current activity has already ended"},
    {"TB.2.3-3", "an inactive root can't be suspended"},
    {"TB.2.3-4", "the root has no parent to exit to"},
    {"TB.2.3-5", "there is nothing to suspend"},
    {"TB.2.3-6", "there is nothing to abandon"},
    {"TB.2.3-7", "the termination request isn't defined"},
    {"SB.2.1-1", "the last activity of the tree was reached"},
    {"SB.2.1-2", "the cluster has no available children"},
    {"SB.2.1-3", "no activity comes before the root"},
    {"SB.2.1-4", "the control mode forwardOnly doesn't allow it"},
    {"SB.2.2-1", "the control mode flow doesn't allow it"},
    {"SB.2.2-2", "the activity isn't allowed"},
    {"SB.2.4-1", "a rule stops the traversal forward"},
    {"SB.2.4-2", "the control mode forwardOnly doesn't allow it"},
    {"SB.2.4-3", "no activity comes before the root"},
    {"SB.2.5-1", "the sequencing session has already begun"},
    {"SB.2.6-1", "the sequencing session has already begun"},
    {"SB.2.6-2", "no activity is suspended"},
    {"SB.2.7-1", "the sequencing session has not begun"},
    {"SB.2.7-2", "the control mode flow doesn't allow it"},
    {"SB.2.8-1", "the sequencing session has not begun"},
    {"SB.2.8-2", "the control mode flow doesn't allow it"},
    {"SB.2.9-1", "there is no target for the choice"},
    {"SB.2.9-2", "the target activity isn't available"},
    {"SB.2.9-3", "the target activity is hidden from choice"},
    {"SB.2.9-4", "the control mode choice doesn't allow it"},
    {"SB.2.9-5", "there are no activities to consider"},
    {"SB.2.9-6", "an activity on the way can't be activated by a choice below it"},
    {"SB.2.9-7", "the control mode choiceExit doesn't allow it"},
    {"SB.2.9-8", "the choice is constrained"},
    {"SB.2.9-9", "nothing can be delivered in the target activity"},
    {"SB.2.10-1", "the sequencing session has not begun"},
    {"SB.2.10-2", "the current activity is active or suspended"},
    {"SB.2.10-3", "nothing can be delivered in the activity to retry"},
    {"SB.2.11-1", "the sequencing session has not begun"},
    {"SB.2.11-2", "the current activity has not ended"},
    {"SB.2.12-1", "the sequencing request isn't defined"},
    {"SB.2.13-1", "the sequencing session has not begun"},
    {"DB.1.1-1", "only a leaf can be delivered"},
    {"DB.1.1-2", "there is nothing to deliver"},
    {"DB.1.1-3", "an activity on the way isn't allowed"},
    {"DB.2-1", "the current activity has not ended"},
};
static_assert(std::size(kExceptions) == static_cast<std::size_t>(PlexoSequencingException::DB_2_1) + 1);

}  // namespace

std::string_view PlexoExceptionText::GetCode(PlexoSequencingException exception) {
  return kExceptions[static_cast<std::size_t>(exception)].code;
}

std::string_view PlexoExceptionText::GetText(PlexoSequencingException exception) {
  return kExceptions[static_cast<std::size_t>(exception)].text;
}
