#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <string>
#include <string_view>

#include "workbench/cli/UsageError.h"
#include "workbench/cli/scene_file.h"

TEST(SceneFromAPipe, IsReadOnceAlsoWhenItIsFaulty) {
    constexpr std::string_view scene = "{\"instances\":\n [1 2]}";
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    ASSERT_EQ(write(ends[1], scene.data(), scene.size()), static_cast<ssize_t>(scene.size()));
    close(ends[1]);

    std::string refusal;
    try {
        workbench::readSceneFile("/dev/fd/" + std::to_string(ends[0]));
    } catch (const workbench::UsageError& error) {
        refusal = error.what();
    }
    close(ends[0]);
    EXPECT_TRUE(refusal.ends_with("line 2, column 5: expected a comma or a \"]\", found \"2\"."))
        << refusal;
}
