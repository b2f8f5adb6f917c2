#pragma once

#include "chart/cached_rastelle.h"
#include "chart/cached_rastelle_worker.h"

/// What tests see of the tile cache beside its public side.
struct CachedRastelleProbe {
    static int LivingSquares(const CCachedRastelle& cache)
    {
        return cache.squares.Count() + (cache.worker ? cache.worker->Outstanding() : 0);
    }
    static bool HasWorker(const CCachedRastelle& cache) { return cache.worker != nullptr; }
    /// A paint without the painting.
    static void Ask(CCachedRastelle& cache, const FRect& dest, const DblPoint& origin, int level)
    {
        DblPoint offset;
        cache.PrepareGrid(dest, origin, level, offset);
        cache.RequestMissing();
    }
    static const square_map& Map(const CCachedRastelle& cache) { return cache.map; }
    static const Dib_List& Squares(const CCachedRastelle& cache) { return cache.squares; }
};
