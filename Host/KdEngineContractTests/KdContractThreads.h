#pragma once

/** @return the number of this process's threads; -1 where the system does not tell. */
int kdContractThreads();
