#include "platform/stop_signals.h"

#include <gtest/gtest.h>
#include <poll.h>

#include <csignal>

namespace lumbra::platform {
namespace {

volatile std::sig_atomic_t ownHandlerRan = 0;

// While a catcher lives, each stop signal is only recorded (the first one counts) and wakes its
// descriptor; afterwards the handlers from before it are back.
TEST(StopSignalsTest, ACatcherRecordsTheFirstStopSignalAndGivesTheHandlersBack) {
    for (const int signo : {SIGINT, SIGTERM, SIGHUP}) {
        SCOPED_TRACE(signo);
        ownHandlerRan = 0;
        std::signal(signo, [](int) { ownHandlerRan = 1; });
        {
            const StopSignalCatcher catcher;
            EXPECT_FALSE(StopRequested());
            ASSERT_EQ(std::raise(signo), 0);
            std::raise(signo == SIGINT ? SIGTERM : SIGINT);
            EXPECT_EQ(StopSignal(), signo);
            pollfd p{StopSignalDescriptor(), POLLIN, 0};
            EXPECT_EQ(::poll(&p, 1, 0), 1);
            EXPECT_EQ(ownHandlerRan, 0);
        }
        EXPECT_EQ(StopSignalDescriptor(), -1);
        std::raise(signo);
        EXPECT_EQ(ownHandlerRan, 1);
        std::signal(signo, SIG_DFL);
    }
}

}  // namespace
}  // namespace lumbra::platform
