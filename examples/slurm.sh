#!/bin/sh
#SBATCH --job-name=vistrel
#SBATCH --array=1-100
#SBATCH --cpus-per-task=4
#SBATCH --requeue
# sbatch slurm.sh FRAMES PICTURES: develops a folder of frames, each task of the array its share. The
# array may have any range and step. Submitted again, it makes what is missing.
set -eu
frames=$1 pictures=$2
first=$SLURM_ARRAY_TASK_MIN step=${SLURM_ARRAY_TASK_STEP:-1}
part=$(((SLURM_ARRAY_TASK_ID - first) / step + 1))
exec vistrel develop "$frames" --recursive --keep-going --jobs "${SLURM_CPUS_PER_TASK:-1}" \
  --shard "$part/$SLURM_ARRAY_TASK_COUNT" -o "$pictures"
