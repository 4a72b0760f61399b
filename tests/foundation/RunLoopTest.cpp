#include "platform/foundation/RunLoop.h"

#include "tests/support/RunLoopConformance.h"

namespace clipwave::testing {

INSTANTIATE_TEST_SUITE_P(Poll, RunLoopConformance, ::testing::Values(&makeRunLoop));

}  // namespace clipwave::testing
