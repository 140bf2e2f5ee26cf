#include "apps/moxel/CommandLine.h"

#include <Moxelcore/Core/Exception.h>

#include <CLI/CLI.hpp>

#include <new>
#include <ostream>

#include "apps/moxel/Algorithms.h"
#include "apps/moxel/DescribeCommand.h"
#include "apps/moxel/Errors.h"
#include "apps/moxel/InfoCommand.h"
#include "apps/moxel/Interrupt.h"
#include "apps/moxel/ListCommand.h"
#include "apps/moxel/RunCommand.h"
#include "apps/moxel/RunValues.h"

namespace moxel {

namespace {

void addForm(CLI::App& command, OutputForm& form)
{
    command.add_flag_callback(
        "--json", [&form] { form = OutputForm::json; }, "Print JSON");
}

/// An option that may come several times, with one value each.
void addPairs(CLI::App& command, std::string const& name, std::vector<std::string>& words, std::string const& value,
              std::string const& help)
{
    command.add_option(name, words, help)->type_name("NAME=" + value)->allow_extra_args(false);
}

void addList(CLI::App& app, std::ostream& out)
{
    auto const form = std::make_shared<OutputForm>(OutputForm::text);
    CLI::App& command = *app.add_subcommand("list", "List the algorithms by module");
    addForm(command, *form);
    command.final_callback([form, &out] { printAlgorithms(*form, out); });
}

void addDescribe(CLI::App& app, std::ostream& out)
{
    auto const form = std::make_shared<OutputForm>(OutputForm::text);
    auto const name = std::make_shared<std::string>();
    CLI::App& command = *app.add_subcommand("describe", "Describe the properties of an algorithm");
    command.add_option("NAME", *name, "Algorithm")->required()->type_name("");
    addForm(command, *form);
    command.final_callback(
        [form, name, &out] { printDescription(*findAlgorithm(*name).createInstance(), *form, out); });
}

void addRun(CLI::App& app, std::ostream& out)
{
    auto const options = std::make_shared<RunOptions>();
    auto const name = std::make_shared<std::string>();
    CLI::App& command = *app.add_subcommand("run", "Run an algorithm");
    command.add_option("NAME", *name, "Algorithm")->required()->type_name("");
    command.add_option("VALUES", options->values, "Properties: numbers, names, lists, files")
        ->type_name("PROPERTY=VALUE");
    command.add_option("--threads", options->threads, "Most threads to use")->check(CLI::Range(1, 4096));
    command.add_option("--level", options->level, "auto, scalar or sse")->type_name("LEVEL");
    command.add_option("--extra-memory", options->extraMemory, "Most memory for intermediate images, in 2^20 voxels")
        ->check(CLI::Range(0, 1 << 30));
    addPairs(command, "--type", options->voxelTypes, "TYPE", "Voxel type that an output image has before the run");
    addPairs(command, "--interpretation", options->interpretations, "binary|label|value",
             "How an input image is to be read");
    addPairs(command, "--pages", options->pages, "plans|time|spectral", "What the pages of an input image are");
    command.add_option("--colours", options->coloured, "Write an output image of labels as a picture in colours")
        ->type_name("NAME")
        ->allow_extra_args(false);
    command
        .add_option_function<std::string>(
            "--compression",
            [options](std::string const& word) {
                options->compression = word == "none" ? Compression::none : Compression::deflate;
            },
            "Compression of TIFF files: none or deflate, which is the default")
        ->check(CLI::IsMember({"none", "deflate"}))
        ->type_name("KIND");
    addForm(command, options->form);
    command.final_callback(
        [options, name, &out] { runAlgorithm(findAlgorithm(*name).createInstance(), *options, out); });
}

void addInfo(CLI::App& app, std::ostream& out)
{
    auto const form = std::make_shared<OutputForm>(OutputForm::text);
    auto const path = std::make_shared<std::string>();
    auto const pages = std::make_shared<std::optional<mox::ImageDimension>>();
    CLI::App& command = *app.add_subcommand("info", "Tell what an image file holds");
    command.add_option("FILE", *path, "Image file")->required()->type_name("");
    command
        .add_option_function<std::string>(
            "--pages", [pages](std::string const& word) { *pages = parsePages(word); }, "What the pages are")
        ->type_name("plans|time|spectral");
    addForm(command, *form);
    command.final_callback([form, path, pages, &out] { printInfo(*path, *pages, *form, out); });
}

void carryOut(int count, char const* const* arguments, std::ostream& out)
{
    CLI::App app("Runs the algorithms of the Moxelcore library on image files.", "moxel");
    app.require_subcommand(0, 1);
    app.set_version_flag("--version", MOXEL_VERSION);
    addList(app, out);
    addDescribe(app, out);
    addRun(app, out);
    addInfo(app, out);
    try {
        app.parse(count, arguments);
        if (app.get_subcommands().empty()) {
            throw UsageError("a command is missing; see moxel --help");
        }
    } catch (CLI::CallForHelp const&) {
        out << app.help();
    } catch (CLI::CallForVersion const& version) {
        out << version.what() << '\n';
    }
    if (!out.flush()) {
        throw FileError("cannot write the results to standard output");
    }
}

} // namespace

ExitCode runCommandLine(int count, char const* const* arguments, std::ostream& out, std::ostream& err)
{
    auto const fail = [&err](ExitCode code, std::string const& reason) {
        err << "moxel: " << reason << (reason.ends_with('\n') ? "" : "\n");
        return code;
    };
    interrupt::watch();
    try {
        carryOut(count, arguments, out);
        return exitDone;
    } catch (CLI::ParseError const& error) {
        return fail(exitUsage, error.what() + std::string("; see moxel --help"));
    } catch (UsageError const& error) {
        return fail(exitUsage, error.what());
    } catch (Cancelled const& cancelled) {
        return fail(exitCancelled, cancelled.what());
    } catch (mox::Exception const& error) {
        return fail(exitFailed, error.what().c_str());
    } catch (std::bad_alloc const&) {
        return fail(exitFailed, "not enough memory");
    } catch (std::exception const& error) {
        return fail(exitFailed, error.what());
    }
}

} // namespace moxel
