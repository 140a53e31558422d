#include "../commands.h"
#include "../output.h"

namespace kshop
{

namespace
{

int sayThatItIsAbsent()
{
    complain("this build has no preview; build with -DKORVAN_PREVIEW=ON");
    return exit_failure;
}

} // namespace

int runPreview(const GlobalOptions&, const PreviewOptions&) { return sayThatItIsAbsent(); }

int runPreviewWorker(const GlobalOptions&) { return sayThatItIsAbsent(); }

} // namespace kshop
