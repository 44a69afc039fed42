// unit/run_status_test.cpp - exit statuses of the ends of a run, traditional and conventional.
#include "system/console.h"

#include "support.h"

namespace {

constexpr int traditional = 5; // a status that no conventional end has

const auto ended_with = [](int status) { return testing::ExitedWithCode(status); };

TEST(RunStatus, TraditionalStatusIsThatOfCaller) {
    EXPECT_EXIT(utl_Finish(traditional), ended_with(traditional), "");
    EXPECT_EXIT(utl_FinishUnreached(traditional), ended_with(traditional), "");
    EXPECT_EXIT(utl_Fail(traditional), ended_with(traditional), "");
}

TEST(RunStatus, ConventionalStatusTellsSuccessFromFailure) {
    const auto end_by = [](void (*end)(int)) {
        utl_UseConventionalStatuses();
        end(traditional);
    };
    EXPECT_EXIT(end_by(utl_Finish), ended_with(0), "");
    EXPECT_EXIT(end_by(utl_FinishUnreached), ended_with(3), "");
    EXPECT_EXIT(end_by(utl_Fail), ended_with(1), "");
    EXPECT_EXIT(end_by(utl_Quit), ended_with(traditional), "");
}

TEST(RunStatus, NotedFailureCountsIfConventional) {
    const auto fail_and_end_by = [](void (*end)(int)) {
        if (utl_NoteFailure()) exit(77);
        end(traditional);
    };
    EXPECT_EXIT(fail_and_end_by(utl_Finish), ended_with(traditional), "");
    EXPECT_EXIT(fail_and_end_by(utl_FinishUnreached), ended_with(traditional), "");
    const auto conventionally = [](void (*end)(int)) {
        utl_UseConventionalStatuses();
        if (!utl_NoteFailure()) exit(77);
        end(traditional);
    };
    EXPECT_EXIT(conventionally(utl_Finish), ended_with(1), "");
    EXPECT_EXIT(conventionally(utl_FinishUnreached), ended_with(1), "");
}

TEST(RunStatus, LostOutputCountsIfConventional) {
    const auto lose_output = [](void (*end)(int), bool is_conventional) {
        if (is_conventional) utl_UseConventionalStatuses();
        if (!freopen("/dev/full", "w", stdout)) exit(77);
        printf("lost");
        end(traditional);
    };
    EXPECT_EXIT(lose_output(utl_Finish, false), ended_with(traditional), "");
    EXPECT_EXIT(lose_output(utl_Finish, true), ended_with(1), "");
    EXPECT_EXIT(lose_output(utl_FinishUnreached, true), ended_with(1), "");
}

TEST(RunStatus, EarlierLossIsNotForgotten) {
    const auto lose_output_early = [] {
        utl_UseConventionalStatuses();
        if (!freopen("/dev/full", "w", stdout)) exit(77);
        printf("lost");
        fflush(stdout);
        utl_Finish(traditional);
    };
    EXPECT_EXIT(lose_output_early(), ended_with(1), "");
}

} // namespace
