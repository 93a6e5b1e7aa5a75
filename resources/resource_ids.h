// Numbers of the plug-in's resources, shared by the resource script and the code.
#pragma once

#define IDD_ABOUT 129
#define IDR_PIPL 16000
