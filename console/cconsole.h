// (in progress: the console object)
#pragma once
