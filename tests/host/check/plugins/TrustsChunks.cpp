// Trusts that a chunk is its own.
#include "tests/host/check/plugins/GoodEffect.h"

#include <cstdlib>

namespace {

class TrustsChunks : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    bool takeChunk(bool bank, const char* data, std::size_t size) override {
        if (!GoodEffect::takeChunk(bank, data, size)) {
            std::abort();
        }
        return true;
    }
};

} // namespace

EXPORT_EFFECT(TrustsChunks)
