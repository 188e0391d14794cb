set pagination off
set print pretty off
break Show
run
up
print text
print empty
print array
print clientArray
print texts
print view
print list
print map
print noMap
print clientMap
print pool
print simplePool
print line
print circle
print arc
print tree

