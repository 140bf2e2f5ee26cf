#include "apps/moxel/Interaction.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sstream>

#include "apps/moxel/Interrupt.h"

namespace moxel {
namespace {

TEST(ProgressBar, IsDrawnAtEachPercentAndWiped)
{
    std::ostringstream terminal;
    {
        ProgressBar bar(terminal);
        bar.show(50);
        bar.show(50.9);
        bar.show(1000);
    }
    std::string const half(25, '=');
    EXPECT_EQ(terminal.str(), "\r[" + half + std::string(25, ' ') + "] 50 %\r[" + half + half + "] 100 %\r\033[K");
}

TEST(ProgressBar, LeavesNothingWhereNothingWasDrawn)
{
    std::ostringstream terminal;
    ProgressBar{terminal};
    EXPECT_EQ(terminal.str(), "");
}

TEST(Interaction, DrawsWhereThereIsABar)
{
    std::ostringstream terminal;
    ProgressBar bar(terminal);
    Interaction(&bar).notifyProgress(10);
    EXPECT_NE(terminal.str(), "");
    Interaction(nullptr).notifyProgress(10);
}

TEST(Interaction, PassesOnTheSignals)
{
    std::signal(SIGHUP, SIG_DFL);
    for (int const number : {SIGINT, SIGTERM, SIGHUP}) {
        interrupt::watch();
        Interaction interaction(nullptr);
        EXPECT_FALSE(interaction.isCancelRequested());
        std::raise(number);
        EXPECT_TRUE(interaction.isCancelRequested());
    }
    std::signal(SIGHUP, SIG_IGN);
    interrupt::watch();
    std::raise(SIGHUP);
    EXPECT_FALSE(interrupt::isRequested());
    std::signal(SIGHUP, SIG_DFL);
}

} // namespace
} // namespace moxel
