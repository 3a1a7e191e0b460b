# follows 2d35e460712c9eac5cdc39abd21298c429809d53f6d989ab9b6ed362290eb01e
zel_resource remove -ip top/duo
# together 4
zel_resource restore -ip top/duo
zel_resource place -rsc top/duo/a -id 21
zel_resource place -rsc top/duo/b -id 22
zel_resource configure -ip top/duo -key rate -value 5
zel_resource place -rsc top/core -id 51
zel_resource remove -ip top/core
# together 2
zel_resource restore -ip top/core
zel_resource place -rsc top/core -id 51
zel_resource remove -ip top/core
# together 2
zel_resource restore -ip top/core
zel_resource place -rsc top/core -id 51
zel_resource reset -ip {top/my ip/a[1]$x}
zel_setting -id 10 -key CH1 -value FAST
zel_setting -id 10 -key CH1 -value SLOW
