// system/same_file.h - whether two names are one file.
#pragma once

// Whether both paths lead to the same file, through links too. A file that is not there is no
// other's.
bool utl_IsSameFile(const char *one, const char *other);
