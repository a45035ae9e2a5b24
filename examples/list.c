/* What the layer offers on this machine: algorithms, formats, instruction sets. */
#include <stdio.h>
#include <vistrel/vistrel_host.h>

int main(void) {
  const vistrel_algorithm* algorithm;
  const vistrel_format* format;
  const char* level;

  for (size_t i = 0; (algorithm = vistrel_algorithm_at(i)) != NULL; ++i)
    printf("algorithm %s: up to %u bits\n", algorithm->name, (unsigned)algorithm->max_bits);
  for (size_t i = 0; (format = vistrel_format_at(i)) != NULL; ++i)
    printf("format %s: %u bytes a pixel\n", format->name,
           (unsigned)(format->channels * format->bytes_per_sample));
  for (size_t i = 0; (level = vistrel_level_name(i)) != NULL; ++i) printf("level %s\n", level);
  return 0;
}
