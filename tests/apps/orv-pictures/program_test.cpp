#include "apps/orv-pictures/Samples.h"

#include <gmock/gmock.h>

#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <set>

// The built program itself: what it writes, its exit status and what it says.

namespace orv::pictures::test {
namespace {

namespace fs = std::filesystem;

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using ::testing::UnorderedElementsAre;

struct Outcome {
    int status = -1;
    std::string output;
};

/// Runs the program through a shell; the output holds both streams.
Outcome run(const std::string &arguments)
{
    const std::string command = ORV_PICTURES_PROGRAM + std::string(" ") + arguments + " 2>&1";
    Outcome outcome;
    std::FILE *pipe = ::popen(command.c_str(), "r");
    if (pipe == nullptr) {
        return outcome;
    }
    std::array<char, 4096> buffer{};
    while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), pipe)) {
        outcome.output.append(buffer.data(), count);
    }
    outcome.status = WEXITSTATUS(::pclose(pipe));
    return outcome;
}

Outcome run(const Samples &samples)
{
    return run("--templates " + samples.templates() + " --out " + samples.out());
}

std::set<std::string> filesIn(const std::string &folder)
{
    std::set<std::string> names;
    std::error_code error;
    for (const auto &entry : fs::directory_iterator(folder, error)) {
        names.insert(entry.path().filename());
    }
    return names;
}

/// One sentence that begins so and holds that, exit status 2, and nothing in the folder.
void expectRefusal(const Samples &samples, const std::string &named, const std::string &what)
{
    const Outcome outcome = run(samples);

    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.output, StartsWith("orv-pictures: " + named));
    EXPECT_THAT(outcome.output, HasSubstr(what));
    EXPECT_THAT(outcome.output, EndsWith(".\n"));
    EXPECT_EQ(outcome.output.find('\n'), outcome.output.size() - 1);
    EXPECT_TRUE(filesIn(samples.out()).empty());
}

TEST(PicturesProgram, writesEachPictureInBothScalesAndASheet)
{
    const Samples samples;

    const Outcome outcome = run(samples);

    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "");
    EXPECT_THAT(filesIn(samples.out()), UnorderedElementsAre("red.png", "red@2x.png", "blue.png",
                                                             "blue@2x.png", "contact-sheet.png"));
}

TEST(PicturesProgram, leavesAFileAloneThatWouldBeTheSame)
{
    const Samples samples;
    ASSERT_EQ(run(samples).status, 0);
    const auto yesterday = fs::file_time_type::clock::now() - std::chrono::hours(24);
    fs::last_write_time(samples.out() + "/red.png", yesterday);
    fs::last_write_time(samples.out() + "/blue.png", yesterday);
    samples.replace("families.json", "#0000FF", "#0000FE");

    ASSERT_EQ(run(samples).status, 0);

    EXPECT_EQ(fs::last_write_time(samples.out() + "/red.png"), yesterday);
    EXPECT_NE(fs::last_write_time(samples.out() + "/blue.png"), yesterday);
    EXPECT_EQ(QImage(QString::fromStdString(samples.out() + "/blue.png")).pixel(0, 0), 0xFF0000FEU);
}

TEST(PicturesProgram, namesTheTemplateThatIsBroken)
{
    const Samples samples;
    samples.write("glyphs/square.svg", "<rect width=\"2\"");

    expectRefusal(samples, samples.path("tile.svg"), "the drawing cannot be read");
}

TEST(PicturesProgram, namesTheTemplateThatIsUnknown)
{
    const Samples samples;
    samples.replace("families.json", "glyphs/square", "glyphs/circle");

    expectRefusal(samples, samples.path("glyphs/circle.svg"), "there is no such template");
}

TEST(PicturesProgram, namesTheDescriptionThatIsBroken)
{
    const Samples samples;
    samples.write("families.json", "{\"lists\": {");

    expectRefusal(samples, samples.path("families.json"), "is no JSON object");
}

TEST(PicturesProgram, namesTheFolderThatIsMissing)
{
    const Samples samples;
    fs::remove_all(samples.templates());

    expectRefusal(samples, samples.templates(), "cannot be read");
}

TEST(PicturesProgram, namesTheFolderThatCannotBeMade)
{
    const Samples samples;
    std::ofstream(samples.out()) << "a file";

    expectRefusal(samples, samples.out(), "the folder cannot be made");

    EXPECT_EQ(readAll(samples.out()), "a file");
}

TEST(PicturesProgram, namesTheFileThatCannotBeWritten)
{
    const Samples samples;
    fs::create_directories(samples.out() + "/blue.png/in the way");

    const Outcome outcome = run(samples);

    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.output,
              "orv-pictures: " + samples.out() + "/blue.png: the file cannot be written.\n");
    EXPECT_THAT(filesIn(samples.out()), UnorderedElementsAre("red.png", "red@2x.png", "blue.png"));
}

TEST(PicturesProgram, explainsItselfAndItsOptions)
{
    EXPECT_EQ(run("--help").status, 0);
    EXPECT_THAT(run("--help").output, StartsWith("usage: orv-pictures"));
    EXPECT_EQ(run("").status, 2);
    EXPECT_THAT(run("--out x").output, HasSubstr("--templates is missing"));
    EXPECT_THAT(run("--templates x").output, HasSubstr("--out is missing"));
    EXPECT_THAT(run("--out").output, HasSubstr("--out needs the path of a folder"));
    EXPECT_THAT(run("--uot x").output, HasSubstr("There is no option \"--uot\"."));
}

} // namespace
} // namespace orv::pictures::test
