/* Memory from a host program's own allocator, which keeps count; one thread. To be called before anything else. */
#include <stdlib.h>
#include <zumcc.h>

static size_t blocksInUse;

static void* countedMalloc(size_t size) {
  void* const block = malloc(size);
  if (block) ++blocksInUse;
  return block;
}

static void countedFree(void* block) {
  if (block) --blocksInUse;
  free(block);
}

void embedZumcc(void) {
  i_malloc = countedMalloc;
  i_free = countedFree;
  threads_omp_of_n_zum = 1;
}

size_t zumccBlocksInUse(void) { return blocksInUse; }
