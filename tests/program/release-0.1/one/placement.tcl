zel_resource reset -ip top/duo/a
zel_resource place -rsc top/duo/a -id 21
zel_resource place -rsc top/duo/b -id 22
zel_resource place -rsc {top/my ip/a[1]$x} -id 12
zel_resource place -rsc top/{br}%2 -id 50
zel_resource configure -ip top/duo -key rate -value 5
zel_resource configure -ip top/{br}%2 -key frequency -value 148.5
zel_setting -id 10 -key CH0 -value FAST
