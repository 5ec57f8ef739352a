// Repeatable uuids: after ZK_SeedUuids, ZK_CreateUuid gives the same sequence of ids for the same
// seed in every run and on every build. The host program seeds it when asked to (its transcripts
// show ids); otherwise ids are random.
#pragma once

void ZK_SeedUuids(unsigned long long seed);
