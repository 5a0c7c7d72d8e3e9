// A service address against a literal of the same length, both returned as texts of their own.

#include "bench/support/Bundles.h"
#include "bench/support/Ratios.h"
#include "bench/urls/Literals.h"
#include "config/GlobalConfigFile.h"
#include "runtime/MacGlobalUrl.h"

#include <fstream>

namespace {

bench::Side side(const std::string &name, std::string (*getter)())
{
    return {name, [getter](benchmark::State &state) {
                for (auto _ : state)
                    benchmark::DoNotOptimize(getter());
            }};
}

void declareInternational()
{
    std::ofstream(GetDatPath()) << "[common]\napp_international=1\n";
    const std::string simple = MacGlobalUrl::GetAccountCancellationAgreementUrl();
    const std::string composed = MacGlobalUrl::GetVipSvrRegisterWithEmail();
    const std::string sizeOf = ", characters: ";
    bench::compare(
        side("an address" + sizeOf + std::to_string(simple.size()), MacGlobalUrl::GetAccountCancellationAgreementUrl),
        bench::atMost(1.5), side("literal" + sizeOf + std::to_string(simple.size()), bench::simpleAddress));
    bench::compare(
        side("host and path" + sizeOf + std::to_string(composed.size()), MacGlobalUrl::GetVipSvrRegisterWithEmail),
        bench::atMost(2.5), side("literal" + sizeOf + std::to_string(composed.size()), bench::composedAddress));
}

} // namespace

int main(int argc, char **argv)
{
    return bench::runInBundles(argc, argv, {{"international", declareInternational}});
}
