#include "app/run_zentara.h"

int main(int argc, char** argv)
{
    return RunZentara(argc, argv);
}
