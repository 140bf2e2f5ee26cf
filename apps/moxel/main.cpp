#include <iostream>

#include "apps/moxel/CommandLine.h"

int main(int count, char** arguments)
{
    return moxel::runCommandLine(count, arguments, std::cout, std::cerr);
}
