#include "netxml_library.hpp"

int main(int argc, char** argv)
{
    return netxml::bench::runLibrary<netxml::bench::Netxml>(argc, argv);
}
