# What hscript creation scripts can do is little yet: keep the path for the test.
set scripted_path = $arg1
