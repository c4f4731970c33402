// tessel: the reference host's command-line application. It plays the CAD application and
// the GIS framework for the VeltoXTessel module: loads it, runs import and export jobs
// through its engines, and hands the results to the user.

#include "refhost/Environment.h"
#include "tessel/cli/CommandLine.h"
#include "tessel/core/AppError.h"
#include "tessel/jobs/Commands.h"

#include <iostream>
#include <string>
#include <vector>

namespace {

// The command word: the first argument that is neither an option nor a global option's value.
const char* CommandTitle(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument == "--codepage" || argument == "--module")
            ++i;
        else if (argument.empty() || argument[0] != '-')
            return argv[i];
    }
    return nullptr;
}

void PrintFailure(int argc, char** argv, const std::string& message)
{
    const char* command = CommandTitle(argc, argv);
    std::cerr << "tessel" << (command ? std::string(" ") + command : std::string()) << ": " << message << std::endl;
}

int Run(int argc, char** argv)
{
    try {
        const auto command = tessel::ParseCommandLine(argc, argv, std::cout);
        if (!command)
            return tessel::ExitSuccess;
        const int status = tessel::RunCommand(*command, std::cout);
        std::cout.flush();
        return status;
    } catch (const tessel::AppError& failure) {
        PrintFailure(argc, argv, failure.what());
        return failure.Status();
    } catch (const tessel::EngineError& failure) {
        std::cerr << "error: " << failure.what() << std::endl;
        return tessel::ExitEngineException;
    } catch (const std::exception& failure) {
        PrintFailure(argc, argv, failure.what());
        return tessel::ExitJobFailed;
    }
}

} // namespace

int main(int argc, char** systemArguments)
{
    refhost::UseBinaryStandardStreams();
    std::vector<std::string> arguments = refhost::CommandLineArguments(argc, systemArguments);
    std::vector<char*> argv;
    for (std::string& argument : arguments)
        argv.push_back(argument.data());
    argv.push_back(nullptr);
    return Run(static_cast<int>(arguments.size()), argv.data());
}
